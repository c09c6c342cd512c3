#pragma once

#include <string>
#include <string_view>

namespace EmbeddedHV::language {

/// Returns a job text that may be shown to others. "***" replaces each literal that is the value of
/// a secret setting, directly or through a definition. Web addresses lose user info and query.
/// Comments are removed. The steps stay the same. For an invalid text, the result only states its
/// size.
std::string withoutSecrets(std::string_view text);

} // namespace EmbeddedHV::language
