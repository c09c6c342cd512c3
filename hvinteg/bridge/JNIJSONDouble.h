#pragma once

#include "bridge/JNIJSONArtifact.h"

/// Reads a double, from a Java object that it is given; it wraps none itself.
/// JSON does not tell kinds of numbers apart, so the object may be any java.lang.Number.
class HVINTEG_EXPORT JNIJSONDouble : public JNIJSONArtifact
{
public:
    JNIJSONDouble();
    JNIJSONDouble(const JNIJSONDouble&) = default;
    JNIJSONDouble& operator=(const JNIJSONDouble&) = default;
    ~JNIJSONDouble() override;

    /// Throws JNIException for a null object and for one that is no number.
    double doubleValue(jobject object);
};
