#pragma once

#include "bridge/JNIJSONArtifact.h"

/// Reads a double from a Java object. It wraps no object itself. The object may be any
/// java.lang.Number, because JSON has only one type of number.
class HVINTEG_EXPORT JNIJSONDouble : public JNIJSONArtifact
{
public:
    /// Uses the manager's present environment.
    JNIJSONDouble();
    JNIJSONDouble(const JNIJSONDouble&) = default;
    JNIJSONDouble& operator=(const JNIJSONDouble&) = default;
    ~JNIJSONDouble() override;

    /// Throws JNIException for null and for an object that is not a java.lang.Number.
    double doubleValue(jobject object);
};
