#include "components/statistics/Distributions.h"

#include <algorithm>
#include <cmath>

#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/normal.hpp>
#include <boost/math/distributions/students_t.hpp>

namespace EmbeddedHV {

namespace math = boost::math;

double twoSidedT(double t, double freedom)
{
    if (!std::isfinite(t))
        return 0;
    return 2 * math::cdf(math::complement(math::students_t(freedom), std::abs(t)));
}

double twoSidedTBound(double probability, double freedom)
{
    return math::quantile(math::complement(math::students_t(freedom), (1 - probability) / 2));
}

double upperF(double f, double numerator, double denominator)
{
    if (!std::isfinite(f))
        return 0;
    return math::cdf(math::complement(math::fisher_f(numerator, denominator), std::max(0.0, f)));
}

double upperChiSquared(double value, double freedom)
{
    if (!std::isfinite(value))
        return 0;
    return math::cdf(math::complement(math::chi_squared(freedom), value));
}

double twoSidedNormalBound(double probability)
{
    return math::quantile(math::complement(math::normal(), (1 - probability) / 2));
}

} // namespace EmbeddedHV
