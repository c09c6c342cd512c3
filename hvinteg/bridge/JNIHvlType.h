#pragma once

#include "bridge/JNIHvlAccessor.h"

/// A type of the job language. If the constructor of a derived class fails, the error is recorded
/// and nothing is wrapped.
class HVINTEG_EXPORT JNIHvlType : public JNIHvlAccessor
{
public:
    ~JNIHvlType() override;

    /// Converts the type to text of the job language. Throws JNIException.
    virtual std::string generate();

protected:
    JNIHvlType() = default;
    JNIHvlType(const JNIHvlType&) = default;
    JNIHvlType& operator=(const JNIHvlType&) = default;
};
