#include "report/maps/MapBounds.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kWantedSteps = 5;
constexpr double kNothing = 1e-9;

/// The smallest round number that is not below `width`.
double roundStep(double width)
{
    const double power = std::pow(10, std::floor(std::log10(width)));
    for (const double factor : {1.0, 2.0, 2.5, 5.0})
        if (factor * power >= width * (1 - kNothing))
            return factor * power;
    return 10 * power;
}

} // namespace

std::vector<double> roundBounds(double lowest, double highest)
{
    const double width = (highest - lowest) / kWantedSteps;
    if (!(width > 0) || !std::isnormal(width))
        return {lowest, highest};
    const double step = roundStep(width);
    const double first = std::floor(lowest / step + kNothing);
    const auto steps = static_cast<std::size_t>(std::ceil(highest / step - kNothing) - first);
    std::vector<double> bounds;
    for (std::size_t at = 0; at <= steps; ++at)
        bounds.push_back((first + static_cast<double>(at)) * step);
    return bounds;
}

std::vector<double> equalBounds(double lowest, double highest, std::size_t steps)
{
    std::vector<double> bounds;
    for (std::size_t at = 0; at <= steps; ++at)
        bounds.push_back(
            std::lerp(lowest, highest, static_cast<double>(at) / static_cast<double>(steps)));
    return bounds;
}

std::vector<double> quantileBounds(const std::vector<double>& values, std::size_t parts)
{
    std::vector<double> bounds;
    for (const double place : equalBounds(0, static_cast<double>(values.size() - 1), parts)) {
        const auto below = static_cast<std::size_t>(place);
        const std::size_t above = std::min(below + 1, values.size() - 1);
        bounds.push_back(
            std::lerp(values[below], values[above], place - static_cast<double>(below)));
    }
    bounds.erase(std::unique(bounds.begin(), bounds.end()), bounds.end());
    return bounds;
}
