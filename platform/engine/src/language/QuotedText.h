#pragma once

#include <string>

#include "language/TextCursor.h"

namespace EmbeddedHV::language {

/// Reads a string in double quotes or a name in backquotes; the cursor is at the opening quote.
/// Returns the text with its escapes resolved: those of JSON, and a backslash before a backquote.
/// Throws JobError for an unknown escape, a lone surrogate, an empty name, and a text that is not
/// closed on its line.
std::string readQuotedText(TextCursor& cursor);

} // namespace EmbeddedHV::language
