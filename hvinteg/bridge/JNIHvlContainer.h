#pragma once

#include "bridge/JNIHvlAccessor.h"

/// A file that goes into a component or comes out of it. Made by JNIHvlProgram::createContainer,
/// passed back into its factory operations, on the thread that made it.
class HVINTEG_EXPORT JNIHvlContainer : public JNIHvlAccessor
{
public:
    JNIHvlContainer(const JNIHvlContainer&) = default;
    JNIHvlContainer& operator=(const JNIHvlContainer&) = default;
    ~JNIHvlContainer() override;

protected:
    explicit JNIHvlContainer(jobject object);

private:
    friend class WrapperFactory;
};
