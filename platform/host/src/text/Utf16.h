#pragma once

#include <string>
#include <string_view>

/// Conversions between UTF-8 and UTF-16; bytes or units that are wrong become U+FFFD, and then the
/// result is false.
bool utf8ToUtf16(std::string_view text, std::u16string& result);
bool utf16ToUtf8(std::u16string_view text, std::string& result);
