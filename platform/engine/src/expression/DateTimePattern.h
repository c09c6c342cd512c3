#pragma once

#include <string>
#include <string_view>

namespace EmbeddedHV {

/// A translated pattern: the database's format, or an error.
struct TranslatedPattern
{
    std::string format;
    std::string fault; ///< empty if the pattern is valid
};

/// Translates a pattern such as "yyyy-MM-dd HH:mm:ss", with text in apostrophes, to the database's
/// format.
TranslatedPattern translatePattern(std::string_view pattern);

} // namespace EmbeddedHV
