#pragma once

#include "components/descriptives/CentralSums.h"
#include "components/descriptives/FieldSummary.h"

namespace EmbeddedHV {

/// Where the values of a field lie. They are summed as (x - offset) / 2^exponent, in which the
/// range has about the size of 1: no power of a deviation leaves the range of a double, and
/// integers beyond 2^53 keep all their digits.
struct ValueFrame
{
    double least = 0;
    double greatest = 0;
    std::int64_t offset = 0; ///< a double without rounding; 0 but for large integers
    int exponent = 0;
    bool isConstant = false; ///< all values are the same

    /// 2^-exponent.
    double scale() const;
};

/// The frame of a numeric field by its minimum and maximum; nothing if it has no value.
std::optional<ValueFrame> frameOf(const FieldSummary& field);

/// Fills in mean, variance, standard deviation, skewness and kurtosis from the sums within the
/// frame. Values that are all the same need no sums but that of their weights.
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
/// are absent below W = 3 and W = 4 records and for values that are all the same. A statistic that
/// is beyond the range of a double is absent and leaves the others as they are.
void fillMoments(const ValueFrame& frame, const CentralSums& sums, NumericSummary& summary);

} // namespace EmbeddedHV
