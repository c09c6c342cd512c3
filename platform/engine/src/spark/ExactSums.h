#pragma once

#include <string>

#include "spark/AggregateLevels.h"

namespace EmbeddedHV {

// The server adds doubles in an order that depends on its tasks, and integers in 64 bits. These
// sums are exact instead: a value is split into digits of a few bits, and the digits of each place
// are added as integers. They return the name of a result, which is missing without values.

/// The sum of Integers, as a DECIMAL. `value` is a name of the levels.
std::string exactIntegerSum(AggregateLevels& levels, const std::string& value);

/// The sum of the finite values of a Real column, `column`, which `t` has. `finite` is the name of
/// its values, missing where they are not finite. Infinite if it exceeds the range of a Real.
std::string exactRealSum(AggregateLevels& levels, const std::string& column,
                         const std::string& finite);

} // namespace EmbeddedHV
