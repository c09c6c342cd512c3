#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "components/temporal/preparation/DimensionValue.h"
#include "components/temporal/preparation/TsdpSettings.h"

namespace EmbeddedHV {

/// The records with one combination of dimension values.
struct RecordGroup
{
    DimensionValues values;
    std::int64_t records = 0;
    /// The values of each metric by time, for KeyedCellReader. All metrics have the same times.
    std::vector<std::string> cells;
};

/// Records that the database has grouped by their dimension values, in memory.
class RecordGroups
{
public:
    explicit RecordGroups(const TsdpSettings& settings);

    /// Takes the next groups: the dimensions, the number of records, and a result of kKeyedSum or
    /// its like for each metric.
    void take(const duck::Chunk& chunk);
    void clear() { _groups = {}; }
    const std::vector<RecordGroup>& all() const { return _groups; }
    /// The times of all records in ascending order: days, or microseconds. kMissingKey comes last.
    std::vector<std::int64_t> times() const;

private:
    Fields _dimensions;
    std::size_t _metricCount;
    std::vector<RecordGroup> _groups;
};

} // namespace EmbeddedHV
