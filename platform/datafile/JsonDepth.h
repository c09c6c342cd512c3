#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace datafile {

/// Where a JSON text first goes deeper than so many lists and objects inside each other; npos if it
/// nowhere does. What is no JSON gets an answer too.
///
/// Looked for ahead of reading: a parser calls itself for each level, and one that is asked at
/// every step searches each list anew for each of its objects, which takes minutes for thousands.
std::size_t placeTooDeep(std::string_view json, int deepest);

/// How large the tree of a JSON text may become.
struct JsonBounds
{
    int depth;          ///< lists and objects inside each other
    std::size_t values; ///< a list or an object counts as two, since it takes more memory
};

/// The bound that a JSON text exceeds.
enum class JsonExcess
{
    Depth,
    Values
};

/// The first bound that a JSON text exceeds; nullopt if it keeps both. A text that is not valid
/// JSON gets an answer too. Check a text from outside before it is parsed: its tree may take many
/// times the memory of the text.
std::optional<JsonExcess> excessOf(std::string_view json, const JsonBounds& bounds);

} // namespace datafile
