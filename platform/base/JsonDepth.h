#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace base {

/// The position where a JSON text first nests lists and objects deeper than `deepest`; npos if it
/// does not. Also works for invalid JSON.
///
/// Use it before parsing: a parser recurses for each level. A parser that asks at every step would
/// search each list again for each of its objects, which takes minutes for thousands.
std::size_t placeTooDeep(std::string_view json, int deepest);

/// The same for a text that arrives in pieces, for example JSON lines. A text cannot contain a line
/// end, so a missing quote hides only its own line.
class JsonNesting
{
public:
    explicit JsonNesting(int deepest) : _deepest(deepest) {}
    /// Takes the next piece. Returns false if the text so far nests deeper.
    bool take(std::string_view piece);
    /// The bytes of the longest record so far: of an element of a list, or of a value of its own.
    std::size_t longestRecord() const { return _length > _longest ? _length : _longest; }
    /// The line on which it begins, from 1.
    std::uint64_t longestLine() const { return _length > _longest ? _recordLine : _longestLine; }

private:
    void measure(char byte);

    int _deepest;
    int _depth = 0;
    int _recordDepth = -1; ///< -1: nothing has been read yet
    std::size_t _length = 0;
    std::size_t _longest = 0;
    std::uint64_t _line = 1;
    std::uint64_t _recordLine = 1;
    std::uint64_t _longestLine = 1;
    bool _isInText = false;
    bool _isEscaped = false; ///< the next character
};

/// Limits for the tree of a JSON text.
struct JsonBounds
{
    int depth;          ///< nesting of lists and objects
    std::size_t values; ///< lists and objects count twice, because they take more memory
};

/// The limit that a JSON text exceeds.
enum class JsonExcess
{
    Depth,
    Values
};

/// The first limit that a JSON text exceeds; nullopt if none. Also works for invalid JSON. Check a
/// text from outside before parsing: its tree may need many times the memory of the text.
std::optional<JsonExcess> excessOf(std::string_view json, const JsonBounds& bounds);

} // namespace base
