#pragma once

#include "bridge/JNIJSONArtifact.h"

/// Reads a boolean from a Java object. It wraps no object itself.
class HVINTEG_EXPORT JNIJSONBoolean : public JNIJSONArtifact
{
public:
    /// Uses the manager's present environment.
    JNIJSONBoolean();
    JNIJSONBoolean(const JNIJSONBoolean&) = default;
    JNIJSONBoolean& operator=(const JNIJSONBoolean&) = default;
    ~JNIJSONBoolean() override;

    /// Throws JNIException for null and for an object that is not a java.lang.Boolean.
    bool booleanValue(jobject object);
};
