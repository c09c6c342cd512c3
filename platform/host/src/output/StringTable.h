#pragma once

#include <map>
#include <optional>
#include <string>

/// Texts by key, UTF-8.
using StringTable = std::map<std::string, std::string>;

/// Reads a table file, a JSON object of keys and texts. Ignores members that are not texts. nullopt
/// if the file cannot be read or is not an object.
std::optional<StringTable> readStringTable(const std::string& file);
