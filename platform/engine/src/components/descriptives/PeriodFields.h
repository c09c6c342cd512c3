#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/descriptives/TimeInterval.h"

namespace EmbeddedHV {

/// What numeric fields count, from the coarsest to the finest period: told by a word in a field's
/// name, else by the range of its values. Nothing if one cannot be told or is no finer than the one
/// before it. Throws JobError.
std::optional<std::vector<TimeUnit>> periodsOf(const ComponentQueries& queries,
                                               const InputTable& table, const Fields& point);

/// SQL of the timestamp that the columns make up; missing where they make up none, as for a month
/// of 13. Periods that no field counts are the first of their kind, the year 1970. Weeks are those
/// of ISO 8601; a day is one of the week, of the month or of the year, by the period before it.
std::string timestampOf(const std::vector<TimeUnit>& periods,
                        const std::vector<std::string>& columns);

} // namespace EmbeddedHV
