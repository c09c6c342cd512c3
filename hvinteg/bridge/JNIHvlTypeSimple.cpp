#include "bridge/JNIHvlTypeSimple.h"

#include "bridge/JavaCall.h"
#include "bridge/JavaClassNames.h"

JNIHvlTypeSimple::JNIHvlTypeSimple(JNIHvlExpression::SimpleTypes type)
{
    setClass(JavaClassNames::TypeSimple);
    JavaCall call(*this, "<init>", "(Lcom/vexa/ae/hvlhelpers/HvlExpression$SimpleTypes;)V",
                  OnFailure::Record);
    if (call.failed())
        return;
    LocalRef<> constant(getEnv(), JNIHvlExpression::newObject(getEnv(), type));
    handleException(false);
    if (!constant)
        return;
    call.take(std::move(constant)).constructWrapped();
}

JNIHvlTypeSimple::~JNIHvlTypeSimple() = default;
