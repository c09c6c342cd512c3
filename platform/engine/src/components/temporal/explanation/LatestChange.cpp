#include "components/temporal/explanation/LatestChange.h"

#include <cmath>
#include <numeric>
#include <unordered_map>

namespace EmbeddedHV {
namespace {

std::optional<std::int64_t> latestPair(const ModelData& data, std::size_t series)
{
    for (std::int64_t index = data.endIndex() - 1; index > data.firstIndex(); --index)
        if (!std::isnan(data.value(series, index)) && !std::isnan(data.value(series, index - 1)))
            return index;
    return std::nullopt;
}

} // namespace

std::optional<LatestChange> latestChange(const ModelData& data, const SeriesEquation& equation)
{
    const auto latest = latestPair(data, equation.series);
    if (!latest)
        return std::nullopt;
    const auto changeOf = [&](std::size_t series, std::int64_t index) {
        return data.value(series, index) - data.value(series, index - 1);
    };
    std::unordered_map<std::size_t, double> sums;
    for (const LaggedTerm& term : equation.terms)
        sums[term.series] += term.coefficient * changeOf(term.series, *latest - term.lag);
    LatestChange result{*latest, changeOf(equation.series, *latest), {}, 0};
    for (const PredictorGroup& group : equation.groups)
        result.contributions.push_back(sums[group.series]);
    result.unexplained = std::accumulate(result.contributions.begin(), result.contributions.end(),
                                         result.change, std::minus<>());
    return result;
}

} // namespace EmbeddedHV
