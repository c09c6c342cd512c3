#include "components/descriptives/summary/DistinctValues.h"

#include <algorithm>

#include "components/descriptives/summary/GroupRows.h"
#include "components/descriptives/summary/ValueCounts.h"

namespace EmbeddedHV {
namespace {

/// If this number of records has too many values already, the other records are not read.
constexpr std::int64_t kRecordsTried = 50000;

bool hasTooMany(const ComponentQueries& queries, const InputTable& table, const std::string& x,
                std::int64_t most)
{
    if (most >= kRecordsTried)
        return false;
    return queries
               .run("SELECT count(DISTINCT " + x + ") FROM (SELECT " + x + " FROM " + table.name() +
                    " LIMIT " + std::to_string(kRecordsTried) + ")")
               .integer(0, 0) > most;
}

/// Value, number of records and weight of each distinct value, in ascending order by group. Returns
/// one more value of a group than the limit if there are too many.
duck::Result countValues(const ComponentQueries& queries, const InputTable& table,
                         const CFField& field, std::optional<std::int64_t> most)
{
    const std::string x = table.column(field);
    const std::string group = listedGroup(table);
    std::string sql = "SELECT " + countedValue("x", field.GetStorage()) + ", n, f" + group +
                      " FROM (SELECT " + x + " AS x, count(*) AS n, CAST(sum(w) AS DOUBLE) AS f" +
                      group + " FROM " + table.name() + " WHERE " + x +
                      " IS NOT NULL GROUP BY ALL)";
    const auto limit = static_cast<std::size_t>(most.value_or(0) + 1);
    if (most && table.isGrouped())
        sql += firstOfGroups(table, "x", limit);
    sql += groupOrder(table, "x");
    if (most && !table.isGrouped())
        sql += " LIMIT " + std::to_string(limit);
    return queries.run(sql);
}

bool wantsDistribution(const DescriptivesSettings& settings, const CFField& field)
{
    return isText(field) ? settings.stringDistributions
                         : settings.wants(ContainerKind::Results) && isCategorical(field);
}

void takeValues(duck::Result& rows, std::size_t row, std::size_t end, bool withDistribution,
                FieldSummary& summary)
{
    const std::vector<CFValue>& labels = summary.field.GetValueLabels();
    std::vector<CFValue> values;
    for (; row < end; ++row) {
        ValueCount count = valueCountAt(rows, row, summary.field.GetStorage());
        const int label = CFValue::GetIndex(count.value, labels);
        values.emplace_back(count.value,
                            label < 0 ? std::string()
                                      : labels[static_cast<std::size_t>(label)].GetLabel(),
                            CFValue::Valid);
        if (withDistribution)
            summary.distribution.push_back(std::move(count));
    }
    summary.distinct = static_cast<std::int64_t>(values.size());
    summary.field.SetValues(std::move(values));
}

/// The limit for the values of a field. A group has at most as many values as records, so values
/// may need no limit. Then they are counted only once.
std::optional<std::int64_t> limitOf(const DescriptivesSettings& settings, std::size_t field,
                                    const GroupSummaries& groups)
{
    const std::optional<std::int64_t> most = settings.mostDistinctValues;
    const bool isReached = std::ranges::any_of(groups, [&](const DataSummary& group) {
        return most && *most < group.fields[field].valid;
    });
    return isReached ? most : std::nullopt;
}

} // namespace

void fillDistinctValues(const ComponentQueries& queries, const InputTable& table,
                        const DescriptivesSettings& settings, std::size_t field,
                        GroupSummaries& groups)
{
    // Values from a document or file may not be those in the data.
    for (DataSummary& group : groups)
        group.fields[field].field.SetValues({});
    const CFField& described = groups.front().fields[field].field;
    const std::optional<std::int64_t> most = limitOf(settings, field, groups);
    // To try first would read a small table twice.
    if (most && !table.isGrouped() &&
        (*most == 0 || (groups.front().records > kRecordsTried &&
                        hasTooMany(queries, table, table.column(described), *most))))
        return;
    duck::Result rows = countValues(queries, table, described, most);
    GroupPlace place(rows, groupColumn(table, 3));
    const bool withDistribution = wantsDistribution(settings, described);
    std::size_t begin = 0;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const std::size_t end = place.endOf(i);
        if (!most || static_cast<std::int64_t>(end - begin) <= *most)
            takeValues(rows, begin, end, withDistribution, groups[i].fields[field]);
        begin = end;
    }
}

} // namespace EmbeddedHV
