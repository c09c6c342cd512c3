#pragma once

#include <string_view>
#include <vector>

#include "language/Token.h"

namespace EmbeddedHV::language {

/// Splits a text into tokens, in linear time. The last token is always End. Throws JobError at the
/// first text that is not a token.
std::vector<Token> tokenize(std::string_view text);

} // namespace EmbeddedHV::language
