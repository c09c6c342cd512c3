#pragma once

#include <cstddef>
#include <string_view>

namespace datafile {

/// Where a JSON text first goes deeper than so many lists and objects inside each other; npos if it
/// nowhere does. What is no JSON gets an answer too.
///
/// Looked for ahead of reading: a parser calls itself for each level, and one that is asked at
/// every step searches each list anew for each of its objects, which takes minutes for thousands.
std::size_t placeTooDeep(std::string_view json, int deepest);

} // namespace datafile
