#pragma once

#include <string>
#include <string_view>

namespace EmbeddedHV::language {

/// A job text that may be shown to others: "***" for each literal that is the value of a secret
/// setting, directly or by a definition; web addresses without user info and query; no comments.
/// The text stays a job of the same steps. Of a text that breaks the grammar only its size is
/// given.
std::string withoutSecrets(std::string_view text);

} // namespace EmbeddedHV::language
