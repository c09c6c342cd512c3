#pragma once

#include "bridge/JNIHvlAccessor.h"

/// A type of the job language. The constructors of its kinds record a failure and then wrap
/// nothing.
class HVINTEG_EXPORT JNIHvlType : public JNIHvlAccessor
{
public:
    ~JNIHvlType() override;

    /// The type as text of the job language. Throws JNIException.
    virtual std::string generate();

protected:
    JNIHvlType() = default;
    JNIHvlType(const JNIHvlType&) = default;
    JNIHvlType& operator=(const JNIHvlType&) = default;
};
