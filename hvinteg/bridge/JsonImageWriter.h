#pragma once

#include <jni.h>

#include <string>
#include <vector>

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONBoolean.h"
#include "bridge/JNIJSONDouble.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/JsonValue.h"

/// Writes a value to the arrays of a JsonImage by the wrappers, with a call for each value. Used if
/// the JSON classes offer no such method.
class JsonImageWriter
{
public:
    /// Both are borrowed; values are appended.
    JsonImageWriter(std::vector<JsonNode>& nodes, std::vector<char>& texts)
        : _nodes(nodes), _texts(texts)
    {
    }
    /// Throws JNIException.
    void write(jobject value);

private:
    void writeArray(jobject array);
    void writeObject(jobject object);
    void writeScalar(jobject value);
    void writeNumber(jobject number);
    void writeText(const std::string& text);
    std::size_t enter(JsonKind kind, std::size_t size);
    void leave(std::size_t own);
    void put(JsonKind kind, std::int64_t payload);

    std::vector<JsonNode>& _nodes;
    std::vector<char>& _texts;
    int _depth = 0;
    JNIJSONObject _object{nullptr};
    JNIJSONArray _array{static_cast<const char*>(nullptr)};
    JNIJSONDouble _double;
    JNIJSONBoolean _boolean;
};
