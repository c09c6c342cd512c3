#pragma once

#include "DataFileNames.h"
#include "datafile/Duck.h"

namespace EmbeddedHV {

/// The aggregate functions of SQL that add reals, in one pass, with what the additions round off.
/// Values that are missing, infinite or not a number count for nothing. Without any other value the
/// result is missing.
///
/// D. E. Knuth, "The Art of Computer Programming", volume 2, section 4.2.2, theorem B: what an
/// addition of two doubles rounds off is a double again.
///
/// The sum; infinite if it leaves the range of a double.
inline constexpr const char* kRealSum = "hv_real_sum";
/// The mean; missing if the sum leaves the range of a double. It lies in the range of the values:
/// that of equal values is their value.
inline constexpr const char* kRealMean = "hv_real_mean";

/// Makes them known to the whole instance of the database. Throws duck::QueryError.
void registerCompensatedSums(duck::Connection& connection);

} // namespace EmbeddedHV
