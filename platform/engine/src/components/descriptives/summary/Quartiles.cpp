#include "components/descriptives/summary/Quartiles.h"

#include "components/descriptives/summary/WeightedQuantiles.h"

namespace EmbeddedHV {

Quartiles weightedQuartiles(const ComponentQueries& queries, const InputTable& table,
                            const std::string& x, double weight)
{
    const auto quantiles = weightedQuantiles(queries, table, x, weight, {0.25, 0.5, 0.75});
    return {quantiles[0], quantiles[1], quantiles[2]};
}

} // namespace EmbeddedHV
