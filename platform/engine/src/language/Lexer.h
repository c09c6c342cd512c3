#pragma once

#include <string_view>
#include <vector>

#include "language/Token.h"

namespace EmbeddedHV::language {

/// Cuts a text into tokens, in time linear in its length. The last token is always End. Throws
/// JobError at the first thing that is no token.
std::vector<Token> tokenize(std::string_view text);

} // namespace EmbeddedHV::language
