#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace EmbeddedHV {

/// The end of a message about a name that does not exist: `; did you mean "temp"?` with the
/// candidate that is near enough to be a slip of the pen, or nothing. Case does not count.
std::string suggestion(std::string_view name, const std::vector<std::string_view>& candidates);

} // namespace EmbeddedHV
