#pragma once

#include <string>
#include <vector>

#include "components/descriptives/TimeInterval.h"

namespace EmbeddedHV {

/// The text of "TIME_INTERVAL.json", see docs/descriptives.md.
std::string intervalDocument(const std::vector<TimeInterval>& intervals);

} // namespace EmbeddedHV
