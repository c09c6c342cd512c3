#pragma once

#include <string>

#include "components/temporal/preparation/TsdpSettings.h"

namespace EmbeddedHV {

/// The columns of the input that the preparation needs, in a temporary table, whose rowid counts
/// the records from 0. Infinite numbers and those that are none are missing there, and so are
/// fractions in cyclic fields.
class PreparationTable
{
public:
    /// `name` is that of the table to be made.
    PreparationTable(std::string name, const TsdpSettings& settings);

    /// The SQL that makes the table from the records of a SELECT.
    std::string creation(const std::string& select) const;
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
    std::string _quotedName;
    std::string _columns;
    std::string _times;
    std::string _dimensions;
    std::size_t _dimensionCount;
};

} // namespace EmbeddedHV
