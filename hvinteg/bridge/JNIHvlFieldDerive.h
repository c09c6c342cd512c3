#pragma once

#include "bridge/JNIHvlAccessor.h"

/// A field to be derived: its name and the expression of its value. Made by
/// JNIHvlProgram::createHvlFieldDerive, passed back into it, on the thread that made it.
class HVINTEG_EXPORT JNIHvlFieldDerive : public JNIHvlAccessor
{
public:
    JNIHvlFieldDerive(const JNIHvlFieldDerive&) = default;
    JNIHvlFieldDerive& operator=(const JNIHvlFieldDerive&) = default;
    ~JNIHvlFieldDerive() override;

protected:
    explicit JNIHvlFieldDerive(jobject object);

private:
    friend class WrapperFactory;
};
