#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/temporal/preparation/PreparationTable.h"
#include "components/temporal/preparation/TimeAxis.h"

namespace EmbeddedHV {

/// The points of time of the records in a preparation's table.
struct TimePoints
{
    TimeAxis axis;
    /// A table that numbers what the fields of the time hold, quoted for FROM: columns as those of
    /// the preparation's table, then `i`, the number of the interval, and `r`, the place among
    /// all moments in their order. Empty if the order of the records is the time.
    std::string table;
    std::vector<std::int64_t> times; ///< RecordGroups::times
    /// For each of them the number of the interval; nothing for a time at no point.
    /// Empty if the records are in a table.
    std::vector<std::optional<std::int64_t>> intervals;
};

/// Finds the interval where it is not given, numbers the points of time from the first one or the
/// given one, and reports records that are at no point. Not for the order of the records. Throws
/// JobError.
TimePoints numberPoints(JobContext& context, const std::string& component,
                        const PreparationTable& table, const TsdpSettings& settings);

} // namespace EmbeddedHV
