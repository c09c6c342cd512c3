#include "components/descriptives/summary/ValueCounts.h"

#include <string>
#include <utility>

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
    return queries.run("SELECT " + countedValue("x", storage) + ", n, f FROM (SELECT " + column +
                       " AS x, count(*) AS n, CAST(sum(w) AS DOUBLE) AS f FROM " + table.name() +
                       " WHERE " + column + " IS NOT NULL GROUP BY ALL) ORDER BY x LIMIT " +
                       std::to_string(kMostMissingValues + 1));
}

/// The host stores a missing text as blanks. So a blank text without a label is not a value.
bool isNoValue(const CFDatum& value, const CFField& field)
{
    return value.IsString() && value.GetString().find_first_not_of(' ') == std::string::npos &&
           CFValue::GetIndex(value, field.GetValueLabels()) < 0;
}

} // namespace

std::string countedValue(const std::string& column, CFField::StorageType storage)
{
    if (storage == CFField::String || storage == CFField::Unknown)
        return "replace(" + column + ", chr(0), '\xEF\xBF\xBD')"; // U+FFFD
    return onModelScale(column, storage);
}

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
            ValueCount count = valueCountAt(rows, row, storage);
            if (isNoValue(count.value, summary.field))
                continue;
            without.records -= count.records;
            without.weight -= count.weight;
            summary.missingValues.push_back(std::move(count));
        }
    }
    if (without.records > 0)
        summary.missingValues.push_back(without);
}

} // namespace EmbeddedHV
