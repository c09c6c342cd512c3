#pragma once

#include <string>

/// Makes a text fit for XML 1.0, which has no place for most control characters, U+FFFE and
/// U+FFFF, and loses a carriage return: such a character becomes `_xHHHH_` with four hexadecimal
/// digits. Where the text itself could be read as such a sequence, its underscore becomes
/// `_x005F_`.
std::string escapeText(const std::string& text);

/// Undoes escapeText. A sequence that escapeText never writes stands for itself.
std::string unescapeText(const std::string& text);
