#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/temporal/preparation/PreparationTable.h"

namespace EmbeddedHV {

/// One of the series to be prepared.
struct PlannedSeries
{
    std::size_t combination = 0;   ///< a place in SeriesPlan::combinations
    std::size_t metric = 0;        ///< a place among the metrics
    std::string id;                ///< codes joined by hyphens, as in "4-1"
    std::vector<std::string> name; ///< the values of the dimensions as texts, then the metric
};

/// Which series there are, and how records find theirs.
struct SeriesPlan
{
    std::vector<DimensionValues> values;        ///< of each dimension, by code from 1
    std::vector<std::vector<int>> combinations; ///< codes, one for each dimension
    std::vector<PlannedSeries> series;
    bool isGiven = false; ///< by a list of series, none of which may be left out
    /// The number of records of the most frequent combination.
    std::int64_t mostRecords = 0;
    /// A table of the combinations, quoted for FROM: columns as those of the preparation's table,
    /// then `k`, the combination's place. Empty without dimensions.
    std::string table;
    /// For each combination the place of its records in RecordGroups; nothing if the data have none
    /// of it. Empty if the records are in a table.
    std::vector<std::optional<std::size_t>> groups;
};

/// Finds the series in the table, or takes those of the settings, and reports records that are of
/// none. Throws JobError if there are too many.
SeriesPlan planSeries(JobContext& context, const std::string& component,
                      const PreparationTable& table, const TsdpSettings& settings);

} // namespace EmbeddedHV
