#pragma once

#include <string>

/// Text on its way between C++ and Java.
///
/// C++ has UTF-8. JNI's own byte form differs from it in two places: the NUL character takes two
/// bytes, and a character beyond the basic plane is written as two surrogates of three bytes each.
/// Handing one for the other garbles such characters, and with them names, paths and job texts.

/// Whether JNI's byte form of this text is the text itself.
bool isPlainText(const std::string& utf8);
/// UTF-16 code units; U+FFFD stands for each run of bytes that is not UTF-8.
std::u16string utf16FromUtf8(const std::string& utf8);
/// UTF-8 from JNI's byte form; U+FFFD stands for a surrogate without its partner.
std::string utf8FromJava(const char* bytes);
