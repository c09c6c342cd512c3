#pragma once

#include <vector>

#include "components/descriptives/TimeInterval.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// The table of time intervals with a column for each: its length, its start and end, and how many
/// of its points occur. Cells without a value are empty and have a footnote.
Json intervalTable(const std::vector<TimeInterval>& intervals);

} // namespace EmbeddedHV
