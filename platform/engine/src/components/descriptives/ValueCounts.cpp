#include "components/descriptives/ValueCounts.h"

#include "datafile/ColumnTypes.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostMissingValues = 100;

CFDatum datumAt(duck::Result& rows, std::size_t row, CFField::StorageType storage)
{
    if (storage == CFField::Integer)
        return CFDatum(rows.integer(0, row));
    if (storage == CFField::String || storage == CFField::Unknown)
        return CFDatum(rows.bytes(0, row));
    const auto number = rows.real(0, row);
    return number ? CFDatum(*number) : CFDatum();
}

duck::Result countMissing(const ComponentQueries& queries, const InputTable& table,
                          const std::string& column, CFField::StorageType storage)
{
    return queries.run("SELECT " + onModelScale("x", storage) + ", n, f FROM (SELECT " + column +
                       " AS x, count(*) AS n, CAST(sum(w) AS DOUBLE) AS f FROM " + table.name() +
                       " WHERE " + column + " IS NOT NULL GROUP BY ALL) ORDER BY x LIMIT " +
                       std::to_string(kMostMissingValues + 1));
}

} // namespace

ValueCount valueCountAt(duck::Result& rows, std::size_t row, CFField::StorageType storage)
{
    return {datumAt(rows, row, storage), rows.integer(1, row), rows.real(2, row).value_or(0)};
}

void fillMissingValues(const ComponentQueries& queries, const InputTable& table,
                       FieldSummary& summary)
{
    if (summary.missing == 0)
        return;
    ValueCount without{CFDatum(), summary.missing, summary.missingWeight};
    if (const auto column = table.missingColumn(summary.field)) {
        const CFField::StorageType storage = summary.field.GetStorage();
        duck::Result rows = countMissing(queries, table, *column, storage);
        if (rows.rows() > kMostMissingValues)
            return;
        for (std::size_t row = 0; row < rows.rows(); ++row) {
            summary.missingValues.push_back(valueCountAt(rows, row, storage));
            without.records -= summary.missingValues.back().records;
            without.weight -= summary.missingValues.back().weight;
        }
    }
    if (without.records > 0)
        summary.missingValues.push_back(without);
}

} // namespace EmbeddedHV
