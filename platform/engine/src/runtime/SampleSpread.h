#pragma once

#include "DataFileNames.h"
#include "datafile/Duck.h"

namespace EmbeddedHV {

/// SQL aggregate functions for the spread of a sample of reals, in one pass. They ignore missing,
/// infinite and not-a-number values, and are missing if fewer than two values are left. No square
/// of a value exceeds the range of a double; only the result may.
///
/// B. P. Welford, "Note on a method for calculating corrected sums of squares and products",
/// Technometrics 4, 1962, 419-420. Parts are merged as in T. F. Chan, G. H. Golub and R. J.
/// LeVeque, "Algorithms for computing the sample variance", The American Statistician 37, 1983,
/// 242-247.
///
/// The variance, divided by n - 1; infinite if it exceeds the range of a double.
inline constexpr const char* kRealVariance = "hv_real_variance";
/// The standard deviation; infinite if it exceeds the range of a double.
inline constexpr const char* kRealDeviation = "hv_real_sd";

/// Registers the functions for the whole database. Throws duck::QueryError.
void registerSampleSpread(duck::Connection& connection);

} // namespace EmbeddedHV
