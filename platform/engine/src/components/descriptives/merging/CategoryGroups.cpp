#include "components/descriptives/merging/CategoryGroups.h"

#include <algorithm>

#include "components/descriptives/pairs/ContingencyTable.h"
#include "components/descriptives/summary/FieldParts.h"
#include "components/descriptives/summary/ValueCounts.h"
#include "components/statistics/CategoryMerging.h"

namespace EmbeddedHV {
namespace {

/// The values of a field in records that have a value of another one, in ascending order.
std::vector<CFDatum> valuesBeside(const ComponentQueries& queries, const InputTable& table,
                                  const CFField& field, const CFField& other)
{
    const std::string x = table.column(field);
    duck::Result rows = queries.run("SELECT " + countedValue("x", field.GetStorage()) +
                                    ", 1, 1.0e0 FROM (SELECT DISTINCT " + x + " AS x FROM " +
                                    table.name() + " WHERE " + x + " IS NOT NULL AND " +
                                    table.column(other) + " IS NOT NULL) ORDER BY x");
    std::vector<CFDatum> values;
    for (std::size_t row = 0; row < rows.rows(); ++row)
        values.push_back(valueCountAt(rows, row, field.GetStorage()).value);
    return values;
}

void fillGroups(const ComponentQueries& queries, const InputTable& table,
                const FieldSummary& target, FieldSummary& field)
{
    const std::vector<CFDatum> values = valuesBeside(queries, table, field.field, target.field);
    const CountedContingency counted = contingencyTable(queries, table, field.field, target.field);
    for (const auto& rows : mergedRows(counted.table, field.field.GetType() == CFField::Ordinal)) {
        std::vector<CFDatum>& group = field.mergedValues.emplace_back();
        for (const std::size_t row : rows)
            group.push_back(values.at(row));
    }
}

} // namespace

bool canMerge(const FieldSummary& field)
{
    return isCategorical(field.field) && field.distinct && *field.distinct <= kMostMerged;
}

void fillCategoryGroups(const ComponentQueries& queries, const InputTable& table,
                        const std::string& partName, const std::string& target,
                        DataSummary& summary)
{
    const auto found = std::ranges::find_if(
        summary.fields, [&](const FieldSummary& field) { return field.field.GetName() == target; });
    if (found == summary.fields.end() || !canMerge(*found))
        return;
    const auto place = static_cast<std::size_t>(found - summary.fields.begin());
    std::vector<std::vector<std::size_t>> sets;
    for (std::size_t i = 0; i < summary.fields.size(); ++i)
        if (i != place && canMerge(summary.fields[i]))
            sets.push_back({i, place});
    forFieldSets(queries, table, partName, fieldsOf(summary), sets,
                 [&](const InputTable& part, std::size_t set) {
                     fillGroups(queries, part, *found, summary.fields[sets[set].front()]);
                 });
}

} // namespace EmbeddedHV
