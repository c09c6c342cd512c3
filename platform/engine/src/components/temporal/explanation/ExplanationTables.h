#pragma once

#include <optional>

#include "components/temporal/explanation/Explanation.h"
#include "components/temporal/explanation/ImpactDiagram.h"

/// The tables of an explanation. Each is absent if it would have no rows.
namespace EmbeddedHV::explanation {

/// A row for each target: how well its equation fits.
std::optional<Json> fitTable(const Explanation& explanation);
/// The predictors of each target.
std::optional<Json> edgeTable(const Explanation& explanation);
/// The outliers of each target.
std::optional<Json> outlierTable(const Explanation& explanation);
/// The edges of a diagram by level. `key` makes the table's id.
std::optional<Json> impactTable(const Explanation& explanation, const ImpactDiagram& diagram,
                                const std::string& key);

} // namespace EmbeddedHV::explanation
