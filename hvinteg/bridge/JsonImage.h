#pragma once

#include <jni.h>

#include <vector>

#include "bridge/JsonValue.h"

class JNIHvlAccessor;

/// A JSON value of the Java side, copied as a whole: what it was at that time, read without Java.
///
/// Results are large and read more than once, and a call into the machine for each value costs more
/// than the value's parsing. So the engine's Java classes lay a value out in two arrays; where
/// they have no class for it, the wrappers ask for each value.
class JsonImage
{
public:
    JsonImage() = default;
    /// The image of a Java object, borrowed; nothing for null. Throws JNIException, also for values
    /// that are nested deeper than 500 levels.
    static JsonImage of(JNIHvlAccessor& caller, jobject value);

    JsonValue root() const;

private:
    friend class JsonImageWriter;
    bool takeFrom(JNIHvlAccessor& caller, jobject value);

    std::vector<JsonNode> _nodes;
    std::vector<char> _texts;
};
