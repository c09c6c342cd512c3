#pragma once

#include <optional>
#include <string>

#include "components/descriptives/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Charts of the values of one field. `key` names the data's column of it where its own name
/// cannot.
/// The histogram of a field that has one; nothing if its dates are out of the calendar's reach.
std::optional<Json> histogramChart(const FieldSummary& field, const std::string& key);
/// A bar for each value of a field that has frequencies, or for the most frequent ones.
Json barChart(const FieldSummary& field, const std::string& key, bool weighted);

} // namespace EmbeddedHV
