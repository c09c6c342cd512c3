#include "components/descriptives/Moments.h"

#include <cmath>

namespace EmbeddedHV {
namespace {

std::optional<double> finite(double value)
{
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

} // namespace

void fillMoments(const CentralSums& sums, NumericSummary& summary)
{
    const double w = sums.weight;
    // As sample statistics these divide by the weight less one; the later ones by less yet.
    if (!(w > 1))
        return;
    const double variance = sums.second / (w - 1);
    const double deviation = std::sqrt(variance);
    summary.variance = finite(variance);
    summary.standardDeviation = finite(deviation);
    if (!(variance > 0) || !std::isfinite(variance))
        return;
    // Powers of the deviation may leave the range of a double where the quotients do not.
    if (w >= 3)
        summary.skewness = finite(w / ((w - 1) * (w - 2)) * (sums.third / variance / deviation));
    if (w >= 4)
        summary.kurtosis = finite((w * (w + 1) / ((w - 1) * (w - 2) * (w - 3))) *
                                      (sums.fourth / variance / variance) -
                                  3 * (w - 1) * (w - 1) / ((w - 2) * (w - 3)));
}

} // namespace EmbeddedHV
