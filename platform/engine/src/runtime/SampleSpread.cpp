#include "runtime/SampleSpread.h"

#include <cmath>
#include <cstdint>
#include <limits>

#include "runtime/RealAggregate.h"

namespace EmbeddedHV {
namespace {

/// Values are multiplied by 2^700, 1 or 2^-700, depending on the largest one. So they stay below
/// 2^400, and neither their squares nor the sums of these overflow. Those of tiny values do not
/// become 0.
constexpr double kFinestScale = 0x1p700;
constexpr double kCoarser = 0x1p-700;
constexpr double kGreatestScaled = 0x1p400;

/// Deviations are taken from the first value, which is exact for values close to each other. So a
/// large mean costs no digits.
struct Spread
{
    double first;  ///< scaled
    double mean;   ///< of the deviations from the first value, scaled
    double second; ///< the sum of the squared deviations from the mean, scaled twice
    double scale;
    std::int64_t count;

    void start() { *this = {0, 0, 0, kFinestScale, 0}; }
    void take(double value)
    {
        while (std::fabs(value * scale) > kGreatestScaled)
            coarsen();
        if (count == 0)
            first = value * scale;
        const double deviation = value * scale - first;
        const double before = deviation - mean;
        mean += before / static_cast<double>(++count);
        second += before * (deviation - mean);
    }
    void merge(Spread other)
    {
        if (other.count == 0)
            return;
        if (count == 0) {
            *this = other;
            return;
        }
        while (scale > other.scale)
            coarsen();
        while (other.scale > scale)
            other.coarsen();
        const auto own = static_cast<double>(count);
        const auto added = static_cast<double>(other.count);
        const double distance = (other.first - first) + (other.mean - mean);
        mean += distance * (added / (own + added));
        second += other.second + distance * distance * (own * added / (own + added));
        count += other.count;
    }
    void coarsen()
    {
        scale *= kCoarser;
        first *= kCoarser;
        mean *= kCoarser;
        second = second * kCoarser * kCoarser;
    }
};

/// Still scaled twice. Not a number for a single value.
double scaledVariance(const Spread& spread)
{
    return spread.count > 1 ? spread.second / static_cast<double>(spread.count - 1)
                            : std::numeric_limits<double>::quiet_NaN();
}

double varianceOf(const Spread& spread)
{
    return scaledVariance(spread) / spread.scale / spread.scale;
}

double deviationOf(const Spread& spread)
{
    return std::sqrt(scaledVariance(spread)) / spread.scale;
}

} // namespace

void registerSampleSpread(duck::Connection& connection)
{
    RealAggregate<Spread>::add<varianceOf>(connection, kRealVariance);
    RealAggregate<Spread>::add<deviationOf>(connection, kRealDeviation);
}

} // namespace EmbeddedHV
