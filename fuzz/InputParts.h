#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What is between the parts of an input that stands for several files.
inline constexpr std::string_view kPartMark = "\n%%%\n";

/// An input cut at each mark, up to `most` parts.
std::vector<std::string> partsOf(std::string_view input, std::size_t most);
