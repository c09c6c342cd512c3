#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Separates the files within one input.
inline constexpr std::string_view kPartMark = "\n%%%\n";

/// An input cut at each mark, up to `most` parts.
std::vector<std::string> partsOf(std::string_view input, std::size_t most);
