#pragma once

#include <string>

namespace datafile {

/// `"name"` with quotes doubled, and `'text'` likewise.
std::string quotedIdentifier(const std::string& name);
std::string quotedLiteral(const std::string& text);

} // namespace datafile
