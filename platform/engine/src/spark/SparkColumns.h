#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace EmbeddedHV {

/// The cluster sends times in nanoseconds.
inline constexpr std::int64_t kNanosecondsPerMicrosecond = 1000;

/// A column as the cluster describes it.
struct SparkColumn
{
    std::string name;
    std::string type; ///< in SQL, for example TIME(6)
};

/// The columns in a description of the Java client.
std::vector<SparkColumn> sparkColumns(const std::string& json);

} // namespace EmbeddedHV
