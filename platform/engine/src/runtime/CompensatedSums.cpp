#include "runtime/CompensatedSums.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "runtime/RealAggregate.h"

namespace EmbeddedHV {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct RealSum
{
    double sum;
    double rest; ///< the rounding errors of the additions to `sum`
    double least;
    double greatest;
    std::int64_t count;

    void start() { *this = {0, 0, kInfinity, -kInfinity, 0}; }
    void add(double value)
    {
        const double total = sum + value;
        const double added = total - sum;
        rest += (sum - (total - added)) + (value - added);
        sum = total;
    }
    void take(double value)
    {
        add(value);
        least = std::min(least, value);
        greatest = std::max(greatest, value);
        ++count;
    }
    void merge(const RealSum& other)
    {
        add(other.sum);
        rest += other.rest;
        least = std::min(least, other.least);
        greatest = std::max(greatest, other.greatest);
        count += other.count;
    }
};

double sumOf(const RealSum& sum)
{
    const double whole = sum.sum + sum.rest;
    // If the sum overflows, the rest is meaningless.
    return std::isfinite(whole) ? whole : sum.sum;
}

double meanOf(const RealSum& sum)
{
    if (!std::isfinite(sum.sum))
        return kInfinity;
    const auto count = static_cast<double>(sum.count);
    const double mean = sum.sum / count + sum.rest / count;
    return std::max(sum.least, std::min(sum.greatest, mean));
}

} // namespace

void registerCompensatedSums(duck::Connection& connection)
{
    RealAggregate<RealSum>::add<sumOf>(connection, kRealSum);
    RealAggregate<RealSum>::add<meanOf>(connection, kRealMean);
}

} // namespace EmbeddedHV
