#pragma once

#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/CentralSums.h"

namespace EmbeddedHV {

/// The range of a field's values. Values are summed as (x - offset) / 2^exponent, so the range is
/// about 1. Then no power of a deviation exceeds the range of a double, and integers beyond 2^53
/// keep all digits.
struct ValueFrame
{
    double least = 0;
    double greatest = 0;
    std::int64_t offset = 0; ///< exact as a double; 0 except for large integers
    int exponent = 0;
    bool isConstant = false; ///< all values are equal

    /// 2^-exponent.
    double scale() const;
};

/// The frame of a numeric field, from its minimum and maximum; empty if the field has no value.
std::optional<ValueFrame> frameOf(const FieldSummary& field);

/// Fills in mean, variance, standard deviation, skewness and kurtosis from the sums within the
/// frame. If all values are equal, only the sum of weights is needed.
///
/// A frequency weight represents that number of equal records. So the formulas are those of a
/// sample of W records. W is the sum of the weights; M_k is the sum of w (x - mean)^k:
///
///     variance s^2 = M2 / (W - 1)
///     skewness     = W M3 / ((W - 1) (W - 2) s^3)
///     kurtosis     = (W (W + 1) M4 - 3 (W - 1) M2^2) / ((W - 1) (W - 2) (W - 3) s^4)
///
/// The last two are Fisher's G1 and G2, 0 for a normal distribution: D. N. Joanes and C. A. Gill,
/// "Comparing measures of sample skewness and kurtosis", The Statistician 47 (1998), 183-189. They
/// need W >= 3 and W >= 4, and values that are not all equal; otherwise they are empty. A statistic
/// that exceeds the range of a double is empty; the others are not affected.
void fillMoments(const ValueFrame& frame, const CentralSums& sums, NumericSummary& summary);

} // namespace EmbeddedHV
