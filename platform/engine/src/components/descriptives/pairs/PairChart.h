#pragma once

#include <optional>

#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/PairRule.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A heat map of the strengths of the pairs. Empty without pairs, and if there are too many fields
/// for a readable chart.
std::optional<Json> pairChart(const DataSummary& summary, const PairRule& rule);

} // namespace EmbeddedHV
