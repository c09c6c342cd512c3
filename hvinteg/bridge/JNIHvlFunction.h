#pragma once

#include "bridge/JNIHvlAccessor.h"

/// A function of a job under composition: one step with its configuration and its inputs. Made by
/// JNIHvlProgram. Operations throw JNIException.
class HVINTEG_EXPORT JNIHvlFunction : public JNIHvlAccessor
{
public:
    JNIHvlFunction(const JNIHvlFunction&) = default;
    JNIHvlFunction& operator=(const JNIHvlFunction&) = default;
    ~JNIHvlFunction() override;

    /// The id that the program gave it.
    std::string getId();
    /// The name of the step.
    std::string getName();

protected:
    explicit JNIHvlFunction(jobject object);

private:
    friend class WrapperFactory;
};
