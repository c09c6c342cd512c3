#pragma once

#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/temporal/preparation/SeriesPlan.h"
#include "components/temporal/preparation/TimePoints.h"

namespace EmbeddedHV {

/// The values of each planned series at all points of time, aggregated but with their gaps;
/// not-a-number for a point without a value. Throws JobError if they are too many.
std::vector<std::vector<double>> seriesValues(JobContext& context, const std::string& component,
                                              const PreparationTable& table,
                                              const TsdpSettings& settings, const SeriesPlan& plan,
                                              const TimePoints& points);

} // namespace EmbeddedHV
