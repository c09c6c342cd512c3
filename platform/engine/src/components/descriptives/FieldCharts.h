#pragma once

#include <optional>
#include <string>

#include "components/descriptives/model/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Charts of the values of one field. `key` names its column in the chart's data if the name of the
/// field is not suitable.
/// The histogram of a field that has one; empty if its dates are out of range.
std::optional<Json> histogramChart(const FieldSummary& field, const std::string& key,
                                   bool weighted);
/// A bar for each value of a field with frequencies, or only for the most frequent values.
Json barChart(const FieldSummary& field, const std::string& key, bool weighted);

} // namespace EmbeddedHV
