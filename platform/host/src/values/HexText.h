#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Converts bytes to pairs of hexadecimal digits and back; nullopt for invalid digits. Trailing
/// blanks are ignored.
std::string hexText(std::string_view bytes);
std::optional<std::string> readHex(std::string_view text);
