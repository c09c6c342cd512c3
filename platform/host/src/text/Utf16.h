#pragma once

#include <string>
#include <string_view>

/// Convert between UTF-8 and UTF-16. Invalid input becomes U+FFFD, and the result is then false.
bool utf8ToUtf16(std::string_view text, std::u16string& result);
bool utf16ToUtf8(std::u16string_view text, std::string& result);
