#include "components/descriptives/summary/Quartiles.h"

#include <algorithm>
#include <cmath>

#include "expression/SqlText.h"

namespace EmbeddedHV {

Quartiles weightedQuartiles(const ComponentQueries& queries, const InputTable& table,
                            const std::string& x, double weight)
{
    // A weight counts as that number of cases with the same value. So positions are found in the
    // cumulative weights.
    const double last = std::max(weight - 1, 0.0);
    std::string columns;
    for (const double part : {0.25, 0.5, 0.75})
        for (const double place : {std::floor(last * part), std::ceil(last * part)})
            columns += (columns.empty() ? "" : ", ") +
                       ("CAST(min(x) FILTER (WHERE s > " + sqlConstant(place).sql + ") AS DOUBLE)");
    duck::Result row = queries.run(
        "SELECT " + columns +
        " FROM (SELECT x, sum(f) OVER (ORDER BY x ROWS UNBOUNDED PRECEDING) AS s FROM (SELECT " +
        x + " AS x, sum(w) AS f FROM " + table.name() + " WHERE " + x +
        " IS NOT NULL GROUP BY ALL))");
    std::size_t next = 0;
    const auto quartile = [&](double part) -> std::optional<double> {
        const double place = last * part;
        const auto below = row.real(next++, 0);
        // Because of rounding, the sum of all weights may be slightly less than the last position.
        const auto above = row.real(next++, 0);
        if (!below || !above)
            return below;
        return *below + (*above - *below) * (place - std::floor(place));
    };
    // In the order of the columns.
    const auto first = quartile(0.25);
    const auto median = quartile(0.5);
    return {first, median, quartile(0.75)};
}

} // namespace EmbeddedHV
