#pragma once

#include <cstdint>
#include <vector>

#include "runtime/ExactSum.h"

namespace EmbeddedHV {

/// What several values in one interval become.
enum class Aggregation
{
    Sum,
    Mean,
    Minimum,
    Maximum,
    First, ///< by time, then by the order of the records
    Last,
    Mode ///< the most frequent value, the least of several
};

/// Aggregates the values of one metric, cell by cell: a cell is one interval of one series. The
/// order in which values come does not count. One thread at a time.
class CellValues
{
public:
    CellValues(Aggregation aggregation, std::size_t cells);

    Aggregation aggregation() const { return _aggregation; }
    /// Adds a finite value. `place` orders the values of a cell in time.
    void add(std::size_t cell, double value, std::int64_t place);
    /// Adds several finite values, of a sum or a mean.
    void addSum(std::size_t cell, const ExactSum& sum);
    /// Adds a value that occurs `times` times, and is not added again: for a mode.
    void addCounted(std::size_t cell, double value, std::int64_t times);
    /// The value of each cell, not-a-number for a cell without one. The table is empty then.
    /// `overflows` counts the cells whose sum is no finite number, which have no value either.
    std::vector<double> finish(std::int64_t& overflows);

private:
    ExactSum& sumOf(std::size_t cell);

    Aggregation _aggregation;
    std::vector<double> _values;       ///< of cells with one value, and of what needs no sum
    std::vector<std::uint32_t> _sumOf; ///< a place in _sums counted from 1; empty before the first
    std::vector<ExactSum> _sums;       ///< of cells with several values
    std::vector<std::int64_t> _order;  ///< the place of a first or last value, the count of a mode
};

} // namespace EmbeddedHV
