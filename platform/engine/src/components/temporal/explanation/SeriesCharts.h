#pragma once

#include "components/temporal/explanation/Explanation.h"
#include "components/temporal/explanation/ExplanationSettings.h"

/// Charts of the values of series by time.
namespace EmbeddedHV::explanation {

/// Actual and predicted values of a series. The explanation has data.
Json seriesChart(const Explanation& explanation, std::size_t place);
/// Actual and predicted values of a series and its forecast, with bounds.
Json forecastChart(const Explanation& explanation, const Scores& scores,
                   const SeriesScores& series);

/// What scoring is asked for by a request for a forecast.
ScoringRequest scoringRequest(const ArtifactRequest& request);

} // namespace EmbeddedHV::explanation
