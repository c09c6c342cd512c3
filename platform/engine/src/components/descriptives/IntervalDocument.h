#pragma once

#include <string>
#include <vector>

#include "components/descriptives/TimeInterval.h"

namespace EmbeddedHV {

/// The text of "TIME_INTERVAL.json", see docs/descriptives.md.
std::string intervalDocument(const std::vector<TimeInterval>& intervals);
/// The text of "TIME_INTERVAL.json" for the intervals of each group.
std::string groupIntervalDocument(const std::vector<std::vector<TimeInterval>>& groups);

} // namespace EmbeddedHV
