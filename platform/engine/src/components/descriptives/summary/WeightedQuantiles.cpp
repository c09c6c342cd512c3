#include "components/descriptives/summary/WeightedQuantiles.h"

#include <algorithm>
#include <cmath>

#include "components/descriptives/summary/ChunkColumns.h"
#include "components/descriptives/summary/GroupRows.h"

namespace EmbeddedHV {
namespace {

/// Finds the quantiles of one group from its values, in ascending order. A weight counts as that
/// number of cases with the same value, so positions are found in the cumulative weights.
class QuantileWalk
{
public:
    QuantileWalk(double weight, const std::vector<double>& parts)
    {
        const double last = std::max(weight - 1, 0.0);
        for (const double part : parts)
            _places.push_back(last * part);
    }

    void take(double value, double weight)
    {
        _sum += weight;
        while (_below.size() < _places.size() && _sum > std::floor(_places[_below.size()]))
            _below.push_back(value);
        while (_above.size() < _places.size() && _sum > std::ceil(_places[_above.size()]))
            _above.push_back(value);
    }

    Quantiles quantiles() const
    {
        Quantiles quantiles(_places.size());
        for (std::size_t i = 0; i < _below.size(); ++i) {
            if (!std::isfinite(_below[i]))
                continue;
            quantiles[i] = _below[i];
            // Because of rounding, the sum of all weights may be slightly less than the last
            // position.
            if (i < _above.size() && std::isfinite(_above[i]))
                *quantiles[i] += (_above[i] - _below[i]) * (_places[i] - std::floor(_places[i]));
        }
        return quantiles;
    }

private:
    std::vector<double> _places;
    std::vector<double> _below; ///< the values at the places, rounded down
    std::vector<double> _above; ///< the values at the places, rounded up
    double _sum = 0;
};

/// The values of all groups in ascending order: the value, the sum of its weights, the group.
std::string sortedValues(const InputTable& table, const std::string& x)
{
    const std::string group = listedGroup(table);
    return "SELECT CAST(x AS DOUBLE), CAST(f AS DOUBLE)" + group + " FROM (SELECT " + x +
           " AS x, sum(w) AS f" + group + " FROM " + table.name() + " WHERE " + x +
           " IS NOT NULL GROUP BY ALL)" + groupOrder(table, "x");
}

} // namespace

std::vector<Quantiles> weightedQuantiles(const ComponentQueries& queries, const InputTable& table,
                                         const std::string& x, const std::vector<double>& weights,
                                         const std::vector<double>& parts)
{
    std::vector<QuantileWalk> walks;
    walks.reserve(weights.size());
    for (const double weight : weights)
        walks.emplace_back(weight, parts);
    queries.stream(sortedValues(table, x), [&](const duck::Chunk& chunk) {
        const double* const values = numbersOf(chunk, 0);
        const double* const sums = numbersOf(chunk, 1);
        const std::int64_t* const groups = table.isGrouped() ? integersOf(chunk, 2) : nullptr;
        for (std::size_t row = 0; row < chunk.rows(); ++row)
            walks[groups ? static_cast<std::size_t>(groups[row] - 1) : 0].take(values[row],
                                                                               sums[row]);
    });
    std::vector<Quantiles> quantiles;
    quantiles.reserve(walks.size());
    for (const QuantileWalk& walk : walks)
        quantiles.push_back(walk.quantiles());
    return quantiles;
}

std::vector<Quantiles> weightedQuartiles(const ComponentQueries& queries, const InputTable& table,
                                         const std::string& x, const std::vector<double>& weights)
{
    return weightedQuantiles(queries, table, x, weights, {0.25, 0.5, 0.75});
}

Quantiles weightedQuantiles(const ComponentQueries& queries, const InputTable& table,
                            const std::string& x, double weight, const std::vector<double>& parts)
{
    return weightedQuantiles(queries, table, x, std::vector<double>{weight}, parts).front();
}

} // namespace EmbeddedHV
