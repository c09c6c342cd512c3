#include "bridge/JsonImageWriter.h"

#include <bit>
#include <cstdlib>
#include <set>

#include "JNIException.h"
#include "bridge/JavaCall.h"
#include "bridge/LocalRef.h"

namespace {
/// The same limit as in the engine's classes.
constexpr int kNesting = 500;
constexpr jint kReferencesPerLevel = 3;
} // namespace

void JsonImageWriter::write(jobject value)
{
    if (value == nullptr)
        put(JsonKind::Null, 0);
    else if (_object.isJSONObject(value))
        writeObject(value);
    else if (_object.isJSONArray(value))
        writeArray(value);
    else
        writeScalar(value);
}

void JsonImageWriter::writeArray(jobject array)
{
    const int size = _array.size(array);
    const std::size_t own = enter(JsonKind::Array, static_cast<std::size_t>(size));
    for (int index = 0; index < size; ++index)
        write(LocalRef<>(_array.getEnv(), _array.get(array, index)).get());
    leave(own);
}

void JsonImageWriter::writeObject(jobject object)
{
    const std::set<std::string> keys = _object.keySet(object);
    const std::size_t own = enter(JsonKind::Object, keys.size());
    for (const std::string& key : keys) {
        writeText(key);
        write(LocalRef<>(_object.getEnv(), _object.get(object, key.c_str())).get());
    }
    leave(own);
}

void JsonImageWriter::writeScalar(jobject value)
{
    if (_object.isString(value))
        writeText(_object.getString(static_cast<jstring>(value)));
    else if (_object.isInstance(value, "java/lang/Boolean"))
        put(JsonKind::Flag, _boolean.booleanValue(value) ? 1 : 0);
    else if (_object.isInstance(value, "java/lang/Number"))
        writeNumber(value);
    else
        put(JsonKind::Null, 0);
}

void JsonImageWriter::writeNumber(jobject number)
{
    if (_object.isInstance(number, "java/lang/Integer") ||
        _object.isInstance(number, "java/lang/Long"))
        // Read it from its text: a double would lose the last digits of a long.
        put(JsonKind::Integer, std::strtoll(_object.toString(number).c_str(), nullptr, 10));
    else
        put(JsonKind::Real, std::bit_cast<std::int64_t>(_double.doubleValue(number)));
}

void JsonImageWriter::writeText(const std::string& text)
{
    const std::size_t begin = _texts.size();
    _texts.insert(_texts.end(), text.begin(), text.end());
    // Offset and size share the payload, 32 bits each.
    put(JsonKind::Text, static_cast<std::int64_t>(begin << 32 | text.size()));
}

std::size_t JsonImageWriter::enter(JsonKind kind, std::size_t size)
{
    if (++_depth > kNesting)
        throw JNIException("java.lang.IllegalArgumentException",
                           "The JSON value is nested too deeply", "");
    _object.getEnv()->EnsureLocalCapacity(kReferencesPerLevel * (_depth + 1));
    _object.exceptionCheck();
    put(kind, static_cast<std::int64_t>(size));
    return _nodes.size() - 1;
}

void JsonImageWriter::leave(std::size_t own)
{
    --_depth;
    JsonNode& node = _nodes[own];
    node.head =
        node.head % JsonNode::kKinds + JsonNode::kKinds * static_cast<std::int64_t>(_nodes.size());
}

void JsonImageWriter::put(JsonKind kind, std::int64_t payload)
{
    const auto next = static_cast<std::int64_t>(_nodes.size()) + 1;
    _nodes.push_back({static_cast<std::int64_t>(kind) + JsonNode::kKinds * next, payload});
}
