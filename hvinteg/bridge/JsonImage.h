#pragma once

#include <jni.h>

#include <vector>

#include "bridge/JsonValue.h"

class JNIHvlAccessor;

/// A complete copy of a JSON value of Java, which is read without further Java calls.
///
/// Results are large and read repeatedly, and a call into the machine for each value is slower than
/// parsing it. The engine's Java classes therefore write a value to two arrays. With other JSON
/// classes the wrappers read each value.
class JsonImage
{
public:
    JsonImage() = default;
    /// Copies a borrowed Java object; null gives an empty image. Throws JNIException, also if
    /// values are nested deeper than 500 levels.
    static JsonImage of(JNIHvlAccessor& caller, jobject value);

    JsonValue root() const;

private:
    friend class JsonImageWriter;
    bool takeFrom(JNIHvlAccessor& caller, jobject value);

    std::vector<JsonNode> _nodes;
    std::vector<char> _texts;
};
