#pragma once

#include "components/temporal/explanation/ArtifactText.h"
#include "components/temporal/explanation/Explanation.h"
#include "components/temporal/explanation/ExplanationSettings.h"

/// The parts of "statJson.json".
namespace EmbeddedHV::statistics {

/// An object with the id and the name of a series.
Json seriesObject(const Explanation& explanation, std::size_t place);
/// What one series does in the equation of another, without the ends.
Json effectObject(const CausalEdge& edge);
/// An edge with the ids of its ends.
Json edgeObject(const Explanation& explanation, const CausalEdge& edge);
/// The number; null for not-a-number.
Json optionalNumber(const std::optional<double>& value);
/// A series' node in a drawing: whether it is a target, and how well its equation fits.
Json nodeObject(const Explanation& explanation, std::size_t place);

// The members of an artifact besides those of its request. All throw what the check throws.

/// What a series influences or what influences it.
void addImpact(ArtifactText& text, const Explanation& explanation, const ArtifactRequest& request,
               std::size_t target);
void addNetwork(ArtifactText& text, const Explanation& explanation);
void addFit(ArtifactText& text, const Explanation& explanation, const ArtifactRequest& request);
void addEquations(ArtifactText& text, const Explanation& explanation,
                  const ArtifactRequest& request);
void addOutliers(ArtifactText& text, const Explanation& explanation,
                 const ArtifactRequest& request);
void addRootCauses(ArtifactText& text, const Explanation& explanation,
                   const ArtifactRequest& request, std::size_t target);
/// Values, predictions and the forecast of series.
void addForecast(ArtifactText& text, const Explanation& explanation,
                 const ArtifactRequest& request);

} // namespace EmbeddedHV::statistics
