#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The kinds of a JSON value, by the numbers that the Java side gives them.
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

/// One value of an image: its kind, with the index of what follows its content, and a number whose
/// meaning depends on the kind: itself, the bits of a double, 0 or 1, a count, a place of text.
struct JsonNode
{
    static constexpr std::int64_t kKinds = 8;
    std::int64_t head;
    std::int64_t payload;
};
static_assert(sizeof(JsonNode) == 16, "images come from Java as pairs of numbers");

/// A value of a JsonImage, which must outlive it; a plain value to pass around.
///
/// What is asked of a value of another kind, and of one that is not there, has an answer: the
/// default, no value, nothing to walk through. JSON's null counts as not being there.
class JsonValue
{
public:
    JsonValue() = default;
    /// The first of a layout, all of which is borrowed.
    JsonValue(const JsonNode* nodes, const char* texts) : JsonValue(nodes, texts, 0) {}

    explicit operator bool() const { return kind() != JsonKind::Null; }
    bool isText() const { return kind() == JsonKind::Text; }
    bool isNumber() const { return kind() == JsonKind::Integer || kind() == JsonKind::Real; }
    bool isArray() const { return kind() == JsonKind::Array; }
    bool isObject() const { return kind() == JsonKind::Object; }

    std::string_view text() const;
    double number() const;
    /// As Java makes an int of it: fractions are cut off, and so is what is beyond 32 bits.
    int integer(int byDefault = 0) const;
    bool flag(bool byDefault) const;
    /// The member of an object.
    JsonValue operator[](std::string_view key) const;
    /// How many elements an array has.
    std::size_t size() const;

    /// Walks through the elements of an array.
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
    /// The value must outlive what walks through it.
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
