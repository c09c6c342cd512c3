#pragma once

#include <cstddef>
#include <cstdint>

#include "datafile/Duck.h"

namespace EmbeddedHV {

/// The values of a column of type DOUBLE. Valid as long as the chunk.
inline const double* numbersOf(const duck::Chunk& chunk, std::size_t column)
{
    return static_cast<const double*>(duckdb_vector_get_data(chunk.column(column)));
}

/// The values of a column of type BIGINT. Valid as long as the chunk.
inline const std::int64_t* integersOf(const duck::Chunk& chunk, std::size_t column)
{
    return static_cast<const std::int64_t*>(duckdb_vector_get_data(chunk.column(column)));
}

/// Which values of a column are present, for isThere. Null if all are. Valid as long as the chunk.
inline const std::uint64_t* validityOf(const duck::Chunk& chunk, std::size_t column)
{
    return duckdb_vector_get_validity(chunk.column(column));
}

inline bool isThere(const std::uint64_t* validity, std::size_t row)
{
    return !validity || (validity[row / 64] >> (row % 64) & 1) != 0;
}

} // namespace EmbeddedHV
