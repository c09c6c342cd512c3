#include "components/descriptives/summary/ValueCounts.h"

#include <algorithm>
#include <string>
#include <utility>

#include "components/descriptives/summary/GroupRows.h"
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

/// By group, at most one more value than kMostMissingValues for each.
duck::Result countMissing(const ComponentQueries& queries, const InputTable& table,
                          const std::string& column, CFField::StorageType storage)
{
    const std::string group = listedGroup(table);
    return queries.run("SELECT " + countedValue("x", storage) + ", n, f" + group +
                       " FROM (SELECT " + column +
                       " AS x, count(*) AS n, CAST(sum(w) AS DOUBLE) AS f" + group + " FROM " +
                       table.name() + " WHERE " + column + " IS NOT NULL GROUP BY ALL) " +
                       firstOfGroups(table, "x", kMostMissingValues + 1) + groupOrder(table, "x"));
}

/// The host stores a missing text as blanks. So a blank text without a label is not a value.
bool isNoValue(const CFDatum& value, const CFField& field)
{
    return value.IsString() && value.GetString().find_first_not_of(' ') == std::string::npos &&
           CFValue::GetIndex(value, field.GetValueLabels()) < 0;
}

/// Adds the values in these rows, and the records without a value.
void takeMissing(duck::Result& rows, std::size_t row, std::size_t end, FieldSummary& summary)
{
    if (end - row > kMostMissingValues)
        return;
    ValueCount without{CFDatum(), summary.missing, summary.missingWeight};
    for (; row < end; ++row) {
        ValueCount count = valueCountAt(rows, row, summary.field.GetStorage());
        if (isNoValue(count.value, summary.field))
            continue;
        without.records -= count.records;
        without.weight -= count.weight;
        summary.missingValues.push_back(std::move(count));
    }
    if (without.records > 0)
        summary.missingValues.push_back(without);
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

void fillMissingValues(const ComponentQueries& queries, const InputTable& table, std::size_t field,
                       GroupSummaries& groups)
{
    const CFField& described = groups.front().fields[field].field;
    const auto column = table.missingColumn(described);
    duck::Result rows;
    std::optional<GroupPlace> place;
    if (column && std::ranges::any_of(groups, [field](const DataSummary& group) {
            return group.fields[field].missing > 0;
        })) {
        rows = countMissing(queries, table, *column, described.GetStorage());
        place.emplace(rows, groupColumn(table, 3));
    }
    std::size_t begin = 0;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const std::size_t end = place ? place->endOf(i) : begin;
        if (FieldSummary& summary = groups[i].fields[field]; summary.missing > 0)
            takeMissing(rows, begin, end, summary);
        begin = end;
    }
}

} // namespace EmbeddedHV
