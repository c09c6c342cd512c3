#pragma once

#include <string>
#include <string_view>

#include "dialect/DateTimePattern.h"

namespace EmbeddedHV {

/// The parts of a pattern, or an error.
struct ParsedPattern
{
    DateTimePattern pattern;
    std::string fault; ///< empty if the pattern is valid
};

/// Parses a pattern such as "yyyy-MM-dd HH:mm:ss", with text in apostrophes.
ParsedPattern parsePattern(std::string_view pattern);

} // namespace EmbeddedHV
