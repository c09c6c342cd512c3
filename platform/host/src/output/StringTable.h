#pragma once

#include <map>
#include <optional>
#include <string>

/// Words by their keys, UTF-8.
using StringTable = std::map<std::string, std::string>;

/// A table file, a JSON object of keys and words; what is no text in it is left out. Nothing for a
/// file that cannot be read or is no object.
std::optional<StringTable> readStringTable(const std::string& file);

/// The text of a key in the host's language, both UTF-8; the key where there is none. Looks into
/// the installation's `strings` folder: the file of the locale, of its language, then of English.
/// Each file is read once. Any thread.
std::string translate(const std::string& key);
