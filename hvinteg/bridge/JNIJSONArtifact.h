#pragma once

#include "bridge/JNIHvlAccessor.h"

/// What the wrappers of JSON values have in common: their text, and what a Java object is.
class HVINTEG_EXPORT JNIJSONArtifact : public JNIHvlAccessor
{
public:
    JNIJSONArtifact() = default;
    JNIJSONArtifact(const JNIJSONArtifact&) = default;
    JNIJSONArtifact& operator=(const JNIJSONArtifact&) = default;
    ~JNIJSONArtifact() override;

    /// The JSON text of the wrapped object, without white space. Throws JNIException, as for a
    /// number that JSON does not have.
    virtual std::string serialize();
    /// The same, indented.
    std::string prettyPrint();

    /// What a Java object is; false for null.
    bool isJSONObject(jobject object);
    bool isJSONArray(jobject object);
    bool isString(jobject object);
    /// Whether it is of the class of that JNI name. Throws JNIException.
    bool isInstance(jobject object, const char* className);

protected:
    /// Binds the class, and wraps what its static `parse` makes of a text. A failure is recorded,
    /// and nothing is wrapped; as for a null text.
    void parse(const char* className, const char* signature, const char* json);
};
