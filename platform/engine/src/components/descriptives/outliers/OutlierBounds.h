#pragma once

#include <optional>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/OutlierRule.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// The bounds of a field, without its outliers. Moments and quartiles of the field must be known.
/// Empty if the spread is 0 or a bound exceeds the range of a double. Throws JobError.
///
/// - standardDeviation: mean - 3 s and mean + 3 s.
/// - interquartileRange: Q1 - 1.5 IQR and Q3 + 1.5 IQR. J. W. Tukey, "Exploratory Data Analysis",
///   1977, 43-44.
/// - medianDeviation: |x - median| is 3.5 MAD / 0.6745, with the median MAD of |x - median|. B.
///   Iglewicz and D. C. Hoaglin, "How to Detect and Handle Outliers", 1993, 11-13.
///
/// Extreme bounds are twice as far, for Tukey's fences at 3 IQR.
std::optional<OutlierSummary> outlierBounds(const ComponentQueries& queries,
                                            const InputTable& table, OutlierMethod method,
                                            const FieldSummary& field);

} // namespace EmbeddedHV
