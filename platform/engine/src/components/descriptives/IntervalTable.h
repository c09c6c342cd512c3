#pragma once

#include <vector>

#include "components/descriptives/TimeInterval.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// The table of time intervals, a column each: how long they are, from when to when, and which of
/// their points occur. What is not there without an interval is empty, with a footnote.
Json intervalTable(const std::vector<TimeInterval>& intervals);

} // namespace EmbeddedHV
