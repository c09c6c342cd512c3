#include "components/descriptives/summary/DistinctValues.h"

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

/// Value, number of records and weight of each distinct value, in ascending order. Returns one more
/// value than the limit if there are too many.
duck::Result countValues(const ComponentQueries& queries, const InputTable& table,
                         const FieldSummary& summary, std::optional<std::int64_t> most)
{
    const std::string x = table.column(summary.field);
    const std::string limit = most ? " LIMIT " + std::to_string(*most + 1) : std::string();
    return queries.run("SELECT " + countedValue("x", summary.field.GetStorage()) +
                       ", n, f FROM (SELECT " + x + " AS x, count(*) AS n, CAST(sum(w) AS DOUBLE)" +
                       " AS f FROM " + table.name() + " WHERE " + x +
                       " IS NOT NULL GROUP BY ALL) ORDER BY x" + limit);
}

bool wantsDistribution(const DescriptivesSettings& settings, const CFField& field)
{
    return isText(field) ? settings.stringDistributions
                         : settings.wants(ContainerKind::Results) && isCategorical(field);
}

void takeValues(duck::Result& rows, bool withDistribution, FieldSummary& summary)
{
    const std::vector<CFValue>& labels = summary.field.GetValueLabels();
    std::vector<CFValue> values;
    for (std::size_t row = 0; row < rows.rows(); ++row) {
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

} // namespace

void fillDistinctValues(const ComponentQueries& queries, const InputTable& table,
                        const DescriptivesSettings& settings, std::int64_t records,
                        FieldSummary& summary)
{
    // Values from a document or file may not be those in the data.
    summary.field.SetValues({});
    std::optional<std::int64_t> most = settings.mostDistinctValues;
    // A field has at most as many values as records. Without a limit, values are counted only once.
    if (most && *most >= summary.valid)
        most.reset();
    if (most && *most == 0)
        return;
    // To try first would read a small table twice.
    if (most && records > kRecordsTried &&
        hasTooMany(queries, table, table.column(summary.field), *most))
        return;
    duck::Result rows = countValues(queries, table, summary, most);
    if (most && static_cast<std::int64_t>(rows.rows()) > *most)
        return;
    takeValues(rows, wantsDistribution(settings, summary.field), summary);
}

} // namespace EmbeddedHV
