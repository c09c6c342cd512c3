#pragma once

#include "bridge/JNIHvlAccessor.h"

/// A function of a job: one step with its configuration and inputs. JNIHvlProgram creates it.
/// Operations throw JNIException.
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
    /// Wraps an object of Java with a new global reference. The caller keeps `object`.
    explicit JNIHvlFunction(jobject object);

private:
    friend class WrapperFactory;
};
