#pragma once

#include <string>

#include "language/TextCursor.h"

namespace EmbeddedHV::language {

/// Reads a string in double quotes or a name in backquotes, of which the cursor stands on the
/// first, and gives what is between with its escapes resolved: those of JSON, and a backslash
/// before a backquote. Throws JobError for an unknown escape, half a surrogate pair, an empty name,
/// and a text that its line does not close.
std::string readQuotedText(TextCursor& cursor);

} // namespace EmbeddedHV::language
