#include "components/descriptives/summary/WeightedQuantiles.h"

#include <algorithm>
#include <cmath>

#include "duckdb/DuckDialect.h"

namespace EmbeddedHV {

std::vector<std::optional<double>> weightedQuantiles(const ComponentQueries& queries,
                                                     const InputTable& table, const std::string& x,
                                                     double weight,
                                                     const std::vector<double>& parts)
{
    // A weight counts as that number of cases with the same value. So positions are found in the
    // cumulative weights.
    const double last = std::max(weight - 1, 0.0);
    std::string columns;
    for (const double part : parts)
        for (const double place : {std::floor(last * part), std::ceil(last * part)})
            columns +=
                (columns.empty() ? "" : ", ") +
                ("CAST(min(x) FILTER (WHERE s > " + duckDialect().literal(place) + ") AS DOUBLE)");
    duck::Result row = queries.run(
        "SELECT " + columns +
        " FROM (SELECT x, sum(f) OVER (ORDER BY x ROWS UNBOUNDED PRECEDING) AS s FROM (SELECT " +
        x + " AS x, sum(w) AS f FROM " + table.name() + " WHERE " + x +
        " IS NOT NULL GROUP BY ALL))");
    std::vector<std::optional<double>> quantiles;
    std::size_t next = 0;
    for (const double part : parts) {
        const double place = last * part;
        std::optional<double> below = row.real(next++, 0);
        // Because of rounding, the sum of all weights may be slightly less than the last position.
        const std::optional<double> above = row.real(next++, 0);
        if (below && above)
            *below += (*above - *below) * (place - std::floor(place));
        quantiles.push_back(below);
    }
    return quantiles;
}

} // namespace EmbeddedHV
