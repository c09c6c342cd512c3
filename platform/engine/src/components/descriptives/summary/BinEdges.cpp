#include "components/descriptives/summary/BinEdges.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "base/CivilTime.h"
#include "components/descriptives/summary/CalendarEdges.h"

namespace EmbeddedHV {
namespace {

constexpr double kDay = base::kSecondsPerDay;
/// The largest number of bins before rounding. Rounding the width and moving the edges to multiples
/// of it can add two bins.
constexpr double kMostDivisions = kMostBins - 2;
constexpr double kClockWidths[] = {1,   2,   5,    10,   15,   30,    60,    120,   300,
                                   600, 900, 1800, 3600, 7200, 10800, 21600, 43200, kDay};

/// A width as a fraction, so that its multiples are round decimal numbers.
struct Width
{
    double numerator = 1;
    double denominator = 1;

    double size() const { return numerator / denominator; }
    double edge(double index) const { return index * numerator / denominator; }
};

double divisions(const BinRequest& request)
{
    const double range = request.maximum - request.minimum;
    // Two rules of thumb. Sturges' rule depends only on the number of values and gives the minimum.
    // The interquartile range gives more bins if there are outliers.
    const double sturges = std::ceil(std::log2(std::max(request.weight, 1.0))) + 1;
    const double quartileRange = request.interquartileRange.value_or(0);
    const double wanted =
        quartileRange > 0 ? std::ceil(range / (2 * quartileRange / std::cbrt(request.weight))) : 0;
    return std::clamp(wanted, std::min(sturges, kMostDivisions), kMostDivisions);
}

/// Rounds up to 1, 2 or 5 times a power of ten.
Width roundWidth(double width)
{
    const double power = std::floor(std::log10(width));
    const double scale = std::pow(10, std::abs(power));
    for (const double step : {1.0, 2.0, 5.0, 10.0}) {
        const Width tried = power < 0 ? Width{step, scale} : Width{step * scale, 1};
        if (tried.size() >= width)
            return tried;
    }
    return {width, 1};
}

Width clockWidth(double width)
{
    const auto* found = std::find_if(std::begin(kClockWidths), std::end(kClockWidths),
                                     [width](double known) { return known >= width; });
    if (found != std::end(kClockWidths))
        return {*found, 1};
    return {roundWidth(width / kDay).size() * kDay, 1};
}

/// Narrower bins would have edges that are not distinct doubles.
double narrowest(const BinRequest& request)
{
    constexpr double kSteps = 8;
    const double largest = std::max(std::abs(request.minimum), std::abs(request.maximum));
    const double step = std::nextafter(largest, std::numeric_limits<double>::infinity()) - largest;
    return std::max(step * kSteps, 1e-290);
}

/// The width before it is rounded.
double widthBefore(const BinRequest& request)
{
    const double range = request.maximum - request.minimum;
    return std::max(range > 0 ? range / divisions(request) : 1.0, narrowest(request));
}

Width widthFor(const BinRequest& request)
{
    const double width = widthBefore(request);
    switch (request.scale) {
    case BinScale::Whole:
        return roundWidth(std::max(width, 1.0));
    case BinScale::Days:
        return clockWidth(std::max(width, kDay));
    case BinScale::Seconds:
        return clockWidth(width);
    default:
        return roundWidth(width);
    }
}

} // namespace

std::vector<double> binEdges(const BinRequest& request)
{
    if (request.scale == BinScale::Days || request.scale == BinScale::Seconds)
        if (auto edges = calendarEdges(request.minimum, request.maximum, widthBefore(request)))
            return *std::move(edges);
    const Width width = widthFor(request);
    double first = std::floor(request.minimum / width.size());
    // Rounding may have moved the quotient across an edge.
    while (width.edge(first) > request.minimum)
        --first;
    while (width.edge(first + 1) <= request.minimum)
        ++first;
    std::vector<double> edges = {width.edge(first)};
    for (double next = first + 1; edges.size() == 1 || edges.back() <= request.maximum; ++next)
        edges.push_back(width.edge(next));
    return edges;
}

} // namespace EmbeddedHV
