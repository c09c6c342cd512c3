#pragma once

#include <string>

#include "components/temporal/preparation/RecordGroups.h"
#include "components/temporal/preparation/TsdpSettings.h"

namespace EmbeddedHV {

/// The columns of the input that the preparation needs, in a temporary table. Infinite numbers and
/// those that are none are missing there, and so are fractions in cyclic fields.
///
/// If the aggregations allow it, the table is grouped: it has one row for each time and combination
/// of dimension values, and a sum or mean is a result of kExactSum. Otherwise it has one row for
/// each record.
///
/// The records of a SELECT that can be read again may also be kept as groups in memory, which is
/// faster. Then there is no table.
class PreparationTable
{
public:
    /// `name` is that of the table to be made. `mayKeepGroups` is whether groups in memory are
    /// allowed; they also need dimensions, a field of the time and aggregations without an order.
    PreparationTable(std::string name, const TsdpSettings& settings, bool mayKeepGroups);

    /// The SQL that makes the table from the records of a SELECT, or that gives the groups. To
    /// number records costs the database its parallel scan, so grouped records of a SELECT that can
    /// be read again have no numbers.
    std::string creation(const std::string& select, bool canReadAgain);
    bool keepsGroups() const { return _keepsGroups; }
    /// Takes the next groups.
    void take(const duck::Chunk& chunk) { _groups.take(chunk); }
    void dropGroups() { _groups.clear(); }
    /// Null if there is a table.
    const RecordGroups* groups() const { return _keepsGroups ? &_groups : nullptr; }
    bool isGrouped() const { return _isGrouped; }
    /// SQL of the times in ascending order, each with the number of its first record from 0 and the
    /// number of its records. If hasNumbers() is false, the numbers are 0.
    std::string times() const;
    bool hasNumbers() const { return _hasNumbers; }
    /// SQL of the times in any order, each with the number of its first record and the number of
    /// its records. Reads the records again.
    std::string firstRecords() const;
    /// SQL that counts the records of several rows.
    const char* recordCount() const
    {
        return _isGrouped ? "CAST(coalesce(sum(records), 0) AS BIGINT)" : "count(*)";
    }
    /// Quoted, for FROM.
    const std::string& name() const { return _quotedName; }
    static std::string timeColumn(std::size_t place) { return "t" + std::to_string(place); }
    static std::string dimensionColumn(std::size_t place) { return "d" + std::to_string(place); }
    static std::string metricColumn(std::size_t place) { return "m" + std::to_string(place); }
    /// The columns of all fields of the time, and of all dimensions: "t0, t1".
    const std::string& timeColumns() const { return _times; }
    const std::string& dimensionColumns() const { return _dimensions; }
    /// SQL of whether a record has a value of each dimension.
    std::string hasDimensions() const;

private:
    std::string numbered(const std::string& columns) const;

    std::string _quotedName;
    std::string _select;
    std::string _timeValues;
    std::string _otherValues; ///< of dimensions and metrics, each after a comma
    std::string _times;
    std::string _dimensions;
    std::string _aggregates; ///< of metrics, with a comma between them
    std::size_t _dimensionCount;
    bool _isGrouped;
    bool _keepsGroups;
    RecordGroups _groups;
    bool _hasNumbers = true;
};

} // namespace EmbeddedHV
