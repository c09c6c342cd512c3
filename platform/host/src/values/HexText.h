#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Bytes as pairs of hexadecimal digits, and back; nothing for what is not made of such pairs.
/// Blanks at the end do not count.
std::string hexText(std::string_view bytes);
std::optional<std::string> readHex(std::string_view text);
