#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace EmbeddedHV {

/// The records in which these fields are missing, and no others.
struct MissingPattern
{
    std::vector<std::size_t> fields; ///< positions among the fields of the summary, ascending
    std::int64_t records = 0;
    double weight = 0;
};

/// The most frequent patterns, in descending order of their records.
struct MissingPatterns
{
    std::vector<MissingPattern> listed;
    std::int64_t count = 0; ///< of all patterns
};

} // namespace EmbeddedHV
