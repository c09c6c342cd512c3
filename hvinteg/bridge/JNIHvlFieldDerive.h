#pragma once

#include "bridge/JNIHvlAccessor.h"

/// The name of a derived field and the expression of its value. JNIHvlProgram::createHvlFieldDerive
/// creates it. Pass it to the functions of the program, on the same thread.
class HVINTEG_EXPORT JNIHvlFieldDerive : public JNIHvlAccessor
{
public:
    JNIHvlFieldDerive(const JNIHvlFieldDerive&) = default;
    JNIHvlFieldDerive& operator=(const JNIHvlFieldDerive&) = default;
    ~JNIHvlFieldDerive() override;

protected:
    /// Wraps an object of Java. The wrapper takes over the local reference.
    explicit JNIHvlFieldDerive(jobject object);

private:
    friend class WrapperFactory;
};
