#pragma once

#include "bridge/JNIHvlAccessor.h"

/// Base of the wrappers of JSON values: their text and the kind of a Java object.
class HVINTEG_EXPORT JNIJSONArtifact : public JNIHvlAccessor
{
public:
    JNIJSONArtifact() = default;
    JNIJSONArtifact(const JNIJSONArtifact&) = default;
    JNIJSONArtifact& operator=(const JNIJSONArtifact&) = default;
    ~JNIJSONArtifact() override;

    /// The JSON text of the wrapped object, without white space. Throws JNIException, for example
    /// for a NaN or an infinity.
    virtual std::string serialize();
    /// The JSON text of the wrapped object, indented. Throws what serialize throws.
    std::string prettyPrint();

    /// Whether the object is a JSON object; false for null. Throws JNIException.
    bool isJSONObject(jobject object);
    /// Whether the object is a JSON array; false for null. Throws JNIException.
    bool isJSONArray(jobject object);
    /// Whether the object is a java.lang.String; false for null. Throws JNIException.
    bool isString(jobject object);
    /// Whether the object is an instance of the class with this JNI name; false for null. Throws
    /// JNIException if there is no such class.
    bool isInstance(jobject object, const char* className);

protected:
    /// Wraps the result of the class's static `parse` for a text. For a null text, and on a
    /// failure, which is recorded, nothing is wrapped.
    void parse(const char* className, const char* signature, const char* json);
};
