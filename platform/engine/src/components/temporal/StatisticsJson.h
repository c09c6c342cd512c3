#pragma once

#include "components/temporal/Explanation.h"
#include "components/temporal/ExplanationSettings.h"

/// The parts of "statJson.json".
namespace EmbeddedHV::statistics {

/// An object with the id and the name of a series.
Json seriesObject(const Explanation& explanation, std::size_t place);
/// What one series does in the equation of another, without the ends.
Json effectObject(const CausalEdge& edge);
/// An edge with the ids of its ends.
Json edgeObject(const Explanation& explanation, const CausalEdge& edge);
/// The number; null for what is no number.
Json optionalNumber(const std::optional<double>& value);
/// A series' node in a drawing: whether it is a target, and how well its equation fits.
Json nodeObject(const Explanation& explanation, std::size_t place);

/// What the series of the request's targets influence or what influences them: to be called for one
/// target.
Json impactMembers(const Explanation& explanation, const ArtifactRequest& request,
                   std::size_t target);
Json networkMembers(const Explanation& explanation);
Json fitMembers(const Explanation& explanation, const ArtifactRequest& request);
Json equationMembers(const Explanation& explanation, const ArtifactRequest& request);
Json outlierMembers(const Explanation& explanation, const ArtifactRequest& request);
Json rootCauseMembers(const Explanation& explanation, const ArtifactRequest& request,
                      std::size_t target);

} // namespace EmbeddedHV::statistics
