#pragma once

#include <string_view>

namespace datafile {

/// Whether the bytes are valid UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
bool isUtf8(std::string_view bytes);

} // namespace datafile
