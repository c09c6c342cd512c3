#pragma once

#include <optional>

#include "components/descriptives/model/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A box from quartile to quartile, whiskers to the last values within the bounds, and the values
/// beyond them as points. Empty if the field has no outlier bounds.
std::optional<Json> boxPlot(const FieldSummary& field);

} // namespace EmbeddedHV
