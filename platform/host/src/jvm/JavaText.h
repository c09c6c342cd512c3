#pragma once

#include <string>

/// Text conversions between C++ and Java.
///
/// C++ uses UTF-8. JNI's own encoding differs in two points: NUL takes two bytes, and a character
/// beyond the basic plane is written as two surrogates of three bytes each. Mixing the two corrupts
/// such characters, for example in names, paths and job texts.

/// Whether the text is the same in JNI's encoding.
bool isPlainText(const std::string& utf8);
/// Converts to UTF-16; each run of invalid bytes becomes U+FFFD.
std::u16string utf16FromUtf8(const std::string& utf8);
/// Converts from JNI's encoding to UTF-8; a surrogate without a partner becomes U+FFFD.
std::string utf8FromJava(const char* bytes);
