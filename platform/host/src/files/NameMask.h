#pragma once

#include <string_view>

/// Whether a name matches a mask with `*` for any characters and `?` for one code point; both are
/// UTF-8. The C library's matcher is not used, because it treats brackets and leading periods
/// specially.
bool matchesMask(std::string_view name, std::string_view mask);
