#pragma once

#include "components/descriptives/FieldSummary.h"

namespace EmbeddedHV {

/// Sums of powers of the deviations from the mean, each times its weight, and the sum of weights.
struct CentralSums
{
    double weight = 0;
    double second = 0;
    double third = 0;
    double fourth = 0;
};

/// Fills in variance, standard deviation, skewness and kurtosis.
///
/// A frequency weight stands for that many equal records, so the formulas are those of a sample of
/// W records, W being the sum of the weights, with M_k the sums of w (x - mean)^k:
///
///     variance s^2 = M2 / (W - 1)
///     skewness     = W M3 / ((W - 1) (W - 2) s^3)
///     kurtosis     = (W (W + 1) M4 - 3 (W - 1) M2^2) / ((W - 1) (W - 2) (W - 3) s^4)
///
/// The last two are Fisher's G1 and G2, 0 for a normal distribution: D. N. Joanes and C. A. Gill,
/// "Comparing measures of sample skewness and kurtosis", The Statistician 47 (1998), 183-189. They
/// are absent below W = 3 and W = 4 records and for values that are all the same.
void fillMoments(const CentralSums& sums, NumericSummary& summary);

} // namespace EmbeddedHV
