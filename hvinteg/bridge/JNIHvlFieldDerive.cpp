#include "bridge/JNIHvlFieldDerive.h"

JNIHvlFieldDerive::JNIHvlFieldDerive(jobject object)
{
    init(object, false);
}

JNIHvlFieldDerive::~JNIHvlFieldDerive() = default;
