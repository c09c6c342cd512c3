#pragma once

#include <string>

/// Whether XML 1.0 allows the character, raw or as a reference.
bool isXmlCharacter(char32_t code);

/// Escapes bytes that XML 1.0 does not allow or keep: most control characters, carriage return,
/// U+FFFE, U+FFFF and invalid UTF-8. Each becomes `_xHHHH_` with four hexadecimal digits of its
/// code, which is DC00 + byte for an invalid byte. If the text itself contains such a sequence, its
/// underscore becomes `_x005F_`.
std::string escapeText(const std::string& text);

/// Reverses escapeText. Sequences that escapeText never writes are unchanged.
std::string unescapeText(const std::string& text);
