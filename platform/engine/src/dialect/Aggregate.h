#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "dialect/ValueType.h"

namespace EmbeddedHV {

/// An aggregate function.
enum class Aggregate
{
    Key, ///< the value that all records of a group share
    Count,
    Sum,
    Mean,
    Least,
    Greatest,
    Deviation,
    Variance,
    Median,
    Percentile,
    First, ///< by the number of the record; may be missing
    Last
};

/// A call of an aggregate function.
struct AggregateCall
{
    Aggregate function;
    ValueType type;     ///< of the column
    std::string column; ///< SQL; "*" counts records
    std::string number; ///< the column with the order of the records, for First and Last
    std::int64_t centile = 0;
};

/// A column of a SELECT that aggregates.
struct AggregateColumn
{
    AggregateCall call;
    std::string name; ///< quoted
    /// From the SQL of the aggregate to that of the column, which may be written several times.
    std::function<std::string(const std::string&)> result;
};

/// The positions of the keys, each with the suffix, separated by commas.
std::string keyPlaces(const std::vector<AggregateColumn>& columns, const std::string& suffix);

} // namespace EmbeddedHV
