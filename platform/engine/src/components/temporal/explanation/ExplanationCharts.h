#pragma once

#include "components/temporal/explanation/Explanation.h"
#include "components/temporal/explanation/ImpactDiagram.h"

/// The charts of an explanation.
namespace EmbeddedHV::explanation {

/// The network, or the strongest edges of a large one.
Json networkChart(const Explanation& explanation);
/// A diagram in columns by level; causes have negative levels.
Json impactChart(const Explanation& explanation, const ImpactDiagram& diagram);

} // namespace EmbeddedHV::explanation
