#pragma once

#include <jni.h>

#include <string>
#include <vector>

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONBoolean.h"
#include "bridge/JNIJSONDouble.h"
#include "bridge/JNIJSONObject.h"
#include "bridge/JsonValue.h"

/// Lays a value out for a JsonImage by means of the wrappers, a call for each value: the way for
/// JSON classes that come without one that does it on the Java side.
class JsonImageWriter
{
public:
    /// Both are borrowed, and appended to.
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
