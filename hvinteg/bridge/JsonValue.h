#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Kinds of JSON values, numbered as in Java.
enum class JsonKind : std::uint8_t
{
    Null,
    Flag,
    Integer,
    Real,
    Text,
    Array,
    Object
};

/// One value of an image. `head` holds the kind and the index after the value's content. `payload`
/// depends on the kind: an integer, the bits of a double, 0 or 1, a count, or an offset in the
/// texts.
struct JsonNode
{
    static constexpr std::int64_t kKinds = 8;
    std::int64_t head;
    std::int64_t payload;
};
static_assert(sizeof(JsonNode) == 16, "images come from Java as pairs of numbers");

/// A value of a JsonImage, which must outlive it. Cheap to copy.
///
/// A question to a missing value or to a value of another kind gets an answer: the default, no
/// value or an empty range. A JSON null counts as missing.
class JsonValue
{
public:
    JsonValue() = default;
    /// The first value of an image; the arrays are borrowed.
    JsonValue(const JsonNode* nodes, const char* texts) : JsonValue(nodes, texts, 0) {}

    explicit operator bool() const { return kind() != JsonKind::Null; }
    bool isText() const { return kind() == JsonKind::Text; }
    bool isNumber() const { return kind() == JsonKind::Integer || kind() == JsonKind::Real; }
    bool isArray() const { return kind() == JsonKind::Array; }
    bool isObject() const { return kind() == JsonKind::Object; }

    std::string_view text() const;
    double number() const;
    /// Converted as by Java's intValue: fractions are truncated, and values out of range are
    /// limited or wrapped.
    int integer(int byDefault = 0) const;
    bool flag(bool byDefault) const;
    /// The member of an object, or a missing value.
    JsonValue operator[](std::string_view key) const;
    /// Number of elements of an array.
    std::size_t size() const;

    /// Iterates over the elements of an array.
    class Iterator
    {
    public:
        Iterator(const JsonValue& array, std::int64_t index) : _array(&array), _index(index) {}
        JsonValue operator*() const { return _array->at(_index); }
        Iterator& operator++();
        bool operator!=(const Iterator& other) const { return _index != other._index; }

    private:
        const JsonValue* _array;
        std::int64_t _index;
    };
    /// The value must outlive its iterators.
    Iterator begin() const { return {*this, _index + 1}; }
    Iterator end() const { return {*this, isArray() ? next() : _index + 1}; }

private:
    JsonValue(const JsonNode* nodes, const char* texts, std::int64_t index)
        : _nodes(nodes), _texts(texts), _index(index)
    {
    }
    JsonKind kind() const
    {
        return _nodes == nullptr ? JsonKind::Null
                                 : static_cast<JsonKind>(_nodes[_index].head % JsonNode::kKinds);
    }
    std::int64_t payload() const { return _nodes[_index].payload; }
    std::int64_t next() const { return _nodes[_index].head / JsonNode::kKinds; }
    JsonValue at(std::int64_t index) const { return {_nodes, _texts, index}; }

    const JsonNode* _nodes = nullptr;
    const char* _texts = nullptr;
    std::int64_t _index = 0;
};
