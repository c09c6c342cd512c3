#pragma once

#include <string>
#include <utility>
#include <vector>

/// Names and values, UTF-8, of the split variables in the present split group of the current
/// procedure; empty if no procedure is alive or its data are not split.
std::vector<std::pair<std::string, std::string>> currentSplitList();
