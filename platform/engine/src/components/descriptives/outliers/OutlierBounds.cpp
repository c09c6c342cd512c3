#include "components/descriptives/outliers/OutlierBounds.h"

#include <cmath>

#include "components/descriptives/summary/WeightedQuantiles.h"
#include "duckdb/DuckDialect.h"

namespace EmbeddedHV {
namespace {

constexpr double kDeviations = 3;
constexpr double kQuartileRanges = 1.5;
constexpr double kModifiedScore = 3.5;
/// The third quartile of the standard normal distribution, as the source rounds it.
constexpr double kNormalQuartile = 0.6745;
constexpr double kExtreme = 2;

/// The bounds are this distance below `low` and above `high`.
struct Reach
{
    std::optional<double> low;
    std::optional<double> high;
    std::optional<double> distance;
};

std::optional<double> scaled(double factor, std::optional<double> spread)
{
    return spread ? std::optional(factor * *spread) : std::nullopt;
}

std::optional<double> medianDeviation(const ComponentQueries& queries, const InputTable& table,
                                      const FieldSummary& field)
{
    if (!field.numeric.median)
        return std::nullopt;
    return weightedQuantiles(queries, table,
                             "abs(CAST(" + table.column(field.field) + " AS DOUBLE) - " +
                                 duckDialect().literal(*field.numeric.median) + ")",
                             field.validWeight, {0.5})
        .front();
}

Reach reachOf(const ComponentQueries& queries, const InputTable& table, OutlierMethod method,
              const FieldSummary& field)
{
    const NumericSummary& numeric = field.numeric;
    if (method == StandardDeviation)
        return {numeric.mean, numeric.mean, scaled(kDeviations, numeric.standardDeviation)};
    if (method == MedianDeviation)
        return {numeric.median, numeric.median,
                scaled(kModifiedScore / kNormalQuartile, medianDeviation(queries, table, field))};
    if (!numeric.firstQuartile || !numeric.thirdQuartile)
        return {};
    return {numeric.firstQuartile, numeric.thirdQuartile,
            scaled(kQuartileRanges, *numeric.thirdQuartile - *numeric.firstQuartile)};
}

} // namespace

std::optional<OutlierSummary> outlierBounds(const ComponentQueries& queries,
                                            const InputTable& table, OutlierMethod method,
                                            const FieldSummary& field)
{
    const auto [low, high, distance] = reachOf(queries, table, method, field);
    if (!low || !high || !distance || !(*distance > 0))
        return std::nullopt;
    OutlierSummary bounds;
    bounds.lower = *low - *distance;
    bounds.upper = *high + *distance;
    bounds.extremeLower = *low - kExtreme * *distance;
    bounds.extremeUpper = *high + kExtreme * *distance;
    if (!std::isfinite(bounds.extremeLower) || !std::isfinite(bounds.extremeUpper))
        return std::nullopt;
    bounds.firstQuartile = field.numeric.firstQuartile;
    bounds.median = field.numeric.median;
    bounds.thirdQuartile = field.numeric.thirdQuartile;
    return bounds;
}

} // namespace EmbeddedHV
