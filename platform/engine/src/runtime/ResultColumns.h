#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace EmbeddedHV {

/// The columns of a SELECT that aggregates. Names are quoted.
struct ResultColumns
{
    /// A Real whose infinite values are missing and counted.
    struct Finite
    {
        std::string name;
        std::int64_t count = 0; ///< the number of its count in Session::overflows
    };

    std::vector<std::string> all;
    std::vector<std::string> keys; ///< tell the records apart; none if there is one record
    std::vector<Finite> finite;    ///< in the order of `all`

    /// The SELECT of all columns from a FROM item. `value` gives the SQL for a finite column.
    std::string selectFrom(const std::string& from,
                           const std::function<std::string(const Finite&)>& value) const;
};

} // namespace EmbeddedHV
