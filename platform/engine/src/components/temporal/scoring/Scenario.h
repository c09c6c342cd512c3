#pragma once

#include <string>
#include <vector>

#include "components/temporal/scoring/Scoring.h"
#include "components/temporal/scoring/SeriesPath.h"

namespace EmbeddedHV {

/// Sets the values of the request's scenario in a path that has its forecast without one. A series
/// that nothing asked for depends on gets a remark. Throws JobError, with `component` before the
/// message, if a point of time does not lie beyond the data or is set twice.
void setScenario(SeriesPath& path, const SeriesSystem& system, const TcmModel& model,
                 const ScoringRequest& request, const std::string& component,
                 std::vector<FaultParts>& remarks);

} // namespace EmbeddedHV
