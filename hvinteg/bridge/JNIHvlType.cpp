#include "bridge/JNIHvlType.h"

#include "bridge/JavaCall.h"

JNIHvlType::~JNIHvlType() = default;

std::string JNIHvlType::generate()
{
    return JavaCall(*this, "generate", "()Ljava/lang/String;").callText(getObject());
}
