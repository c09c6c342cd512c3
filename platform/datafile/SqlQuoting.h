#pragma once

#include <string>

namespace datafile {

/// Quotes a name as `"name"` and a text as `'text'`, with inner quotes doubled.
std::string quotedIdentifier(const std::string& name);
std::string quotedLiteral(const std::string& text);

} // namespace datafile
