#include "components/descriptives/pairs/ContingencyTable.h"

#include <algorithm>

#include "runtime/CompensatedSums.h"

namespace EmbeddedHV {
namespace {

/// Row and column from 1 on, records and weight of each cell that is not empty. Their order
/// determines the rounding of sums.
duck::Result cellsOf(const ComponentQueries& queries, const InputTable& table, const CFField& rows,
                     const CFField& columns)
{
    const std::string a = table.column(rows);
    const std::string b = table.column(columns);
    return queries.run("SELECT dense_rank() OVER (ORDER BY a), dense_rank() OVER (ORDER BY b), n, "
                       "f FROM (SELECT " +
                       a + " AS a, " + b + " AS b, count(*) AS n, " + kRealSum + "(CAST(" +
                       InputTable::kWeight + " AS DOUBLE)) AS f FROM " + table.name() + " WHERE " +
                       a + " IS NOT NULL AND " + b + " IS NOT NULL GROUP BY ALL) ORDER BY 1, 2");
}

} // namespace

CountedContingency contingencyTable(const ComponentQueries& queries, const InputTable& table,
                                    const CFField& rows, const CFField& columns)
{
    duck::Result cells = cellsOf(queries, table, rows, columns);
    CountedContingency result;
    Contingency& weights = result.table;
    for (std::size_t i = 0; i < cells.rows(); ++i) {
        const auto row = static_cast<std::size_t>(cells.integer(0, i));
        const auto column = static_cast<std::size_t>(cells.integer(1, i));
        const double weight = cells.real(3, i).value_or(0);
        weights.rows = std::max(weights.rows, row);
        weights.columns = std::max(weights.columns, column);
        weights.cells.push_back({row - 1, column - 1, weight});
        result.records += cells.integer(2, i);
        result.weight += weight;
    }
    return result;
}

} // namespace EmbeddedHV
