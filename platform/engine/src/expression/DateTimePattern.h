#pragma once

#include <string>
#include <string_view>

namespace EmbeddedHV {

/// What became of a pattern: the database's format, or what is wrong with the pattern.
struct TranslatedPattern
{
    std::string format;
    std::string fault; ///< empty if there is none
};

/// Translates a pattern of letters ("yyyy-MM-dd HH:mm:ss", with text between apostrophes) to the
/// format that the database reads.
TranslatedPattern translatePattern(std::string_view pattern);

} // namespace EmbeddedHV
