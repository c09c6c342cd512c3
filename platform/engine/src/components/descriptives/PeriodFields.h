#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/descriptives/TimeInterval.h"

namespace EmbeddedHV {

/// The periods that numeric fields count, from the coarsest to the finest. A word in a field's name
/// decides, else the range of its values. Empty if the period of a field is unknown, or not finer
/// than that of the field before it. Throws JobError.
std::optional<std::vector<TimeUnit>> periodsOf(const ComponentQueries& queries,
                                               const InputTable& table, const Fields& point);

/// SQL for the timestamp that the columns form. Missing for invalid numbers, for example month 13.
/// Without a year the year is 1970; other periods that no field counts have their first value.
/// Weeks are ISO 8601 weeks. A day is a day of the week, month or year, depending on the period
/// before it.
std::string timestampOf(const std::vector<TimeUnit>& periods,
                        const std::vector<std::string>& columns);

} // namespace EmbeddedHV
