#pragma once

#include <string>
#include <vector>

namespace EmbeddedHV {

/// The id of a series: the codes of its dimension values and the number of its metric, all from 1,
/// as in "4-1".
std::string seriesIdOf(const std::vector<int>& codes, int metric);
/// The numbers of an id; empty for a text that is no id of so many dimensions.
std::vector<int> numbersOfSeriesId(const std::string& id, std::size_t dimensions);

} // namespace EmbeddedHV
