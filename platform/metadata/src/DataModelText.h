#pragma once

#include <string>

/// Whether XML 1.0 has a place for the character, raw or as a reference.
bool isXmlCharacter(char32_t code);

/// Makes any bytes fit for XML 1.0, which has no place for most control characters, U+FFFE, U+FFFF
/// and bytes that are not UTF-8, and loses a carriage return: each becomes `_xHHHH_` with four
/// hexadecimal digits of its code, which for a byte that is not UTF-8 is DC00 + byte. Where the
/// text itself could be read as such a sequence, its underscore becomes `_x005F_`.
std::string escapeText(const std::string& text);

/// Undoes escapeText. A sequence that escapeText never writes stands for itself.
std::string unescapeText(const std::string& text);
