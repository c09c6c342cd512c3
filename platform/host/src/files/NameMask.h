#pragma once

#include <string_view>

/// Whether a name matches a mask in which `*` stands for any characters and `?` for one; both are
/// UTF-8, and a character is a code point. All else stands for itself, brackets too, and a leading
/// period is nothing special: that is why the C library's matcher is not used.
bool matchesMask(std::string_view name, std::string_view mask);
