#pragma once

#include "bridge/JNIJSONArtifact.h"

/// Reads a truth value, from a Java object that it is given; it wraps none itself.
class HVINTEG_EXPORT JNIJSONBoolean : public JNIJSONArtifact
{
public:
    JNIJSONBoolean();
    JNIJSONBoolean(const JNIJSONBoolean&) = default;
    JNIJSONBoolean& operator=(const JNIJSONBoolean&) = default;
    ~JNIJSONBoolean() override;

    /// Throws JNIException for a null object and for one that is no java.lang.Boolean.
    bool booleanValue(jobject object);
};
