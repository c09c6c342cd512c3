#include "bridge/JNIHvlContainer.h"

JNIHvlContainer::JNIHvlContainer(jobject object)
{
    init(object, false);
}

JNIHvlContainer::~JNIHvlContainer() = default;
