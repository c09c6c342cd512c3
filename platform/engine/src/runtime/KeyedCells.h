#pragma once

#include <duckdb.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "DataFileNames.h"
#include "datafile/Duck.h"
#include "runtime/ExactSum.h"

namespace EmbeddedHV {

/// SQL aggregate functions of a date, time or timestamp and a real. Each gives for every time of
/// the group the exact sum, the least or the greatest of its values, and their number. They ignore
/// missing, infinite and not-a-number values, but a time with only such values is there too, and
/// so is a missing time. The result is a BLOB for KeyedCellReader. Not for windows.
///
/// To group by few values and collect times inside costs the database much less than to group by
/// both, and the result of a group is one value.
inline constexpr const char* kKeyedSum = "hv_keyed_sum";
inline constexpr const char* kKeyedMinimum = "hv_keyed_min";
inline constexpr const char* kKeyedMaximum = "hv_keyed_max";

/// In the message of a statement that fails because its cells, a time in a group each, would need
/// too much memory. The database cannot put them on disk.
inline constexpr const char* kTooManyCells = "too many times in all groups together";

/// The key of a missing time: after all others.
inline constexpr std::int64_t kMissingKey = INT64_MAX;

/// The cells of a group in ascending order of their keys: days, or microseconds.
class KeyedCellReader
{
public:
    /// Borrows the bytes. They may be unaligned.
    explicit KeyedCellReader(std::string_view bytes);

    /// Reads the next cell; false at the end.
    bool next();
    std::int64_t key() const { return _key; }
    /// Of the values, without missing ones.
    std::int64_t count() const { return _count; }
    /// The exact sum of the values.
    ExactSum sum() const;
    /// The least or greatest value.
    double extreme() const { return _high; }

private:
    std::string_view _bytes;
    std::string_view _tail; ///< the parts of the next sums
    std::string_view _parts;
    std::int64_t _key = 0;
    double _high = 0;
    double _low = 0;
    std::int64_t _count = 0;
};

/// About 1.3 GB.
inline constexpr std::size_t kMostKeyedCells = std::size_t{1} << 25;

/// Registers the functions for the whole database. A function has room for so many cells in all
/// groups of all statements together. Throws duck::QueryError.
void registerKeyedCells(duck::Connection& connection, std::size_t mostCells = kMostKeyedCells);

} // namespace EmbeddedHV
