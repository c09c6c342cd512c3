#pragma once

#include "components/temporal/base/StopCheck.h"
#include "components/temporal/preparation/SeriesPlan.h"
#include "components/temporal/preparation/TimePoints.h"

namespace EmbeddedHV {

/// The values of each planned series at all points of time, of records that are kept as groups.
/// Not-a-number where a series has no value. `overflows` is increased by the number of sums that
/// are no finite number, which have no value either. Throws what `check` throws.
std::vector<std::vector<double>> groupValues(const PreparationTable& table,
                                             const TsdpSettings& settings, const SeriesPlan& plan,
                                             const TimePoints& points, const StopCheck& check,
                                             std::int64_t& overflows);

} // namespace EmbeddedHV
