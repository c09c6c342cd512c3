#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "DataFileNames.h"
#include "runtime/NumberedObjects.h"

namespace datafile::duck {
class Connection;
}

namespace EmbeddedHV {

/// The number of values of a column that became missing because they were infinite. Any thread.
using OverflowCount = std::atomic<std::uint64_t>;

/// The counts of running jobs, for a function of the database that turns infinite results into
/// missing values.
class Overflows : public NumberedObjects<OverflowCount>
{
public:
    /// Registers the function with the database. Call it once. Throws duck::QueryError.
    void registerFunction(duck::Connection& connection);
    /// SQL for the value, or a missing value if it is infinite. `value` is SQL for a real.
    static std::string call(std::int64_t id, const std::string& value);
};

} // namespace EmbeddedHV
