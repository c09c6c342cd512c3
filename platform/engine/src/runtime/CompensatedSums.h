#pragma once

#include "DataFileNames.h"
#include "datafile/Duck.h"

namespace EmbeddedHV {

/// SQL aggregate functions that add reals in one pass and also add the rounding errors. They ignore
/// missing, infinite and not-a-number values. If there are no other values, the result is missing.
///
/// D. E. Knuth, "The Art of Computer Programming", volume 2, section 4.2.2, theorem B: the rounding
/// error of an addition of two doubles is a double.
///
/// The sum; infinite if it exceeds the range of a double.
inline constexpr const char* kRealSum = "hv_real_sum";
/// The mean; infinite if the sum exceeds the range of a double. It lies between the least and the
/// greatest value, so the mean of equal values is that value.
inline constexpr const char* kRealMean = "hv_real_mean";

/// Registers the functions for the whole database. Throws duck::QueryError.
void registerCompensatedSums(duck::Connection& connection);

} // namespace EmbeddedHV
