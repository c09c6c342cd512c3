#pragma once

#include <duckdb.h>

#include <cstddef>

#include "DataFileNames.h"
#include "datafile/Duck.h"
#include "runtime/ExactSum.h"

namespace EmbeddedHV {

/// SQL aggregate function of reals that gives their exact sum and their number. It ignores missing,
/// infinite and not-a-number values. The result is a struct for ExactSumReader and is never
/// missing.
inline constexpr const char* kExactSum = "hv_exact_sum";

/// Reads a column of results of kExactSum. Valid as long as the chunk of the column.
class ExactSumReader
{
public:
    explicit ExactSumReader(duckdb_vector column);
    std::int64_t countAt(std::size_t row) const { return _counts[row]; }
    ExactSum at(std::size_t row) const;

private:
    const double* _highs;
    const double* _lows;
    const std::int64_t* _counts;
    const duckdb_string_t* _parts;
};

/// Registers the function for the whole database. Throws duck::QueryError.
void registerExactSum(duck::Connection& connection);

} // namespace EmbeddedHV
