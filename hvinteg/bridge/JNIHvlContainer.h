#pragma once

#include "bridge/JNIHvlAccessor.h"

/// A file that a component reads or writes. JNIHvlProgram::createContainer creates it. Pass it to
/// the functions of the program, on the same thread.
class HVINTEG_EXPORT JNIHvlContainer : public JNIHvlAccessor
{
public:
    JNIHvlContainer(const JNIHvlContainer&) = default;
    JNIHvlContainer& operator=(const JNIHvlContainer&) = default;
    ~JNIHvlContainer() override;

protected:
    /// Wraps an object of Java. The wrapper takes over the local reference.
    explicit JNIHvlContainer(jobject object);

private:
    friend class WrapperFactory;
};
