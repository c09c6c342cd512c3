#include "components/descriptives/summary/Summaries.h"

#include <algorithm>
#include <iterator>

#include "components/descriptives/summary/DistinctValues.h"
#include "components/descriptives/summary/FieldParts.h"
#include "components/descriptives/summary/GroupRows.h"
#include "components/descriptives/summary/Histogram.h"
#include "components/descriptives/summary/MomentPass.h"
#include "components/descriptives/summary/ValueCounts.h"
#include "components/descriptives/summary/WeightedQuantiles.h"

namespace EmbeddedHV {
namespace {

/// Whether a group has a mean of this field.
bool hasMean(const GroupSummaries& groups, std::size_t field)
{
    return std::ranges::any_of(groups, [field](const DataSummary& group) {
        return group.fields[field].numeric.mean.has_value();
    });
}

/// Counts and ranges of all fields, in one pass.
class CountPass
{
public:
    CountPass(const InputTable& table, bool ranges) : _table(table), _ranges(ranges), _rows(table)
    {
    }

    void run(const ComponentQueries& queries, GroupSummaries& groups)
    {
        _rows.add("count(*)");
        for (const FieldSummary& field : groups.front().fields)
            ask(field.field);
        _rows.run(queries);
        while (DataSummary* const group = _rows.next(groups)) {
            group->records = _rows.integer();
            for (FieldSummary& field : group->fields)
                answer(*group, field);
        }
    }

private:
    bool hasRange(const CFField& field) const
    {
        return _ranges && field.GetStorage() != CFField::String;
    }

    void ask(const CFField& field)
    {
        const std::string x = _table.column(field);
        _rows.add("count(" + x + ")");
        if (hasRange(field)) {
            _rows.add("CAST(min(" + x + ") AS VARCHAR)");
            _rows.add("CAST(max(" + x + ") AS VARCHAR)");
        }
    }

    void answer(const DataSummary& whole, FieldSummary& field)
    {
        field.valid = _rows.integer();
        field.missing = whole.records - field.valid;
        if (hasRange(field.field)) {
            field.minimum = _rows.text();
            field.maximum = _rows.text();
        }
    }

    const InputTable& _table;
    bool _ranges;
    AggregateRows _rows;
};

/// The quartiles of all numeric fields, in one pass.
class QuartilePass
{
public:
    explicit QuartilePass(const InputTable& table) : _table(table), _rows(table) {}

    void run(const ComponentQueries& queries, GroupSummaries& groups)
    {
        std::vector<std::size_t> asked;
        for (std::size_t i = 0; i < groups.front().fields.size(); ++i)
            if (hasMean(groups, i)) {
                asked.push_back(i);
                ask(groups.front().fields[i]);
            }
        if (_rows.empty())
            return;
        _rows.run(queries);
        while (DataSummary* const group = _rows.next(groups))
            for (const std::size_t i : asked)
                answer(group->fields[i].numeric);
    }

private:
    void ask(const FieldSummary& field)
    {
        const std::string x = _table.column(field.field);
        // A list of quantiles is computed once. Three aggregates would each store and sort all
        // values.
        for (const char* place : {"[1]", "[2]", "[3]"})
            _rows.add("quantile_cont(CAST(" + x + " AS DOUBLE), [0.25, 0.5, 0.75])" + place);
    }

    void answer(NumericSummary& numeric)
    {
        const std::optional<double> first = _rows.real();
        const std::optional<double> median = _rows.real();
        const std::optional<double> third = _rows.real();
        if (!numeric.mean)
            return;
        numeric.firstQuartile = first;
        numeric.median = median;
        numeric.thirdQuartile = third;
    }

    const InputTable& _table;
    AggregateRows _rows;
};

void takeWeightedQuartiles(const ComponentQueries& queries, const InputTable& table,
                           std::size_t field, GroupSummaries& groups)
{
    std::vector<double> weights;
    for (const DataSummary& group : groups)
        weights.push_back(group.fields[field].validWeight);
    const std::vector<Quantiles> quartiles = weightedQuartiles(
        queries, table, table.column(groups.front().fields[field].field), weights);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        NumericSummary& numeric = groups[i].fields[field].numeric;
        if (!numeric.mean)
            continue;
        numeric.firstQuartile = quartiles[i][0];
        numeric.median = quartiles[i][1];
        numeric.thirdQuartile = quartiles[i][2];
    }
}

void dropLeftOut(const ComponentQueries& queries, const InputTable& table, GroupSummaries& groups)
{
    const std::string leftOut = " WHERE w IS NULL";
    AggregateRows rows(table);
    rows.add("count(*)");
    rows.run(queries, leftOut);
    std::int64_t all = 0;
    while (DataSummary* const group = rows.next(groups)) {
        group->leftOut = rows.integer();
        all += group->leftOut;
    }
    if (all > 0)
        queries.run("DELETE FROM " + table.name() + leftOut);
}

/// Statistics that only some documents contain.
void fillDetails(const ComponentQueries& queries, const InputTable& table,
                 const DescriptivesSettings& settings, GroupSummaries& groups)
{
    if (settings.wants(ContainerKind::Results) && settings.summaries)
        fillHistograms(queries, table, groups);
    if (!settings.tellsMissing())
        return;
    for (std::size_t i = 0; i < groups.front().fields.size(); ++i)
        if (isCategorical(groups.front().fields[i].field))
            fillMissingValues(queries, table, i, groups);
}

/// Fills in the statistics of the summaries' fields, which are columns of the table. `before`
/// fields have their statistics already.
void fillStatistics(const ComponentQueries& queries, const InputTable& table,
                    const DescriptivesSettings& settings, std::size_t before,
                    GroupSummaries& groups)
{
    CountPass(table, settings.summaries).run(queries, groups);
    sumUp(queries, table, settings.summaries, groups);
    if (!table.isWeighted())
        QuartilePass(table).run(queries, groups);
    for (std::size_t i = 0; i < groups.front().fields.size(); ++i) {
        if (table.isWeighted() && hasMean(groups, i))
            takeWeightedQuartiles(queries, table, i, groups);
        fillDistinctValues(queries, table, settings, i, groups);
        queries.progress(static_cast<double>(++before) /
                         static_cast<double>(settings.fields.size()));
    }
    fillDetails(queries, table, settings, groups);
}

/// Summaries of these fields without statistics.
GroupSummaries emptySummaries(const Fields& fields, std::size_t groups)
{
    DataSummary summary;
    for (const CFField& field : fields)
        summary.fields.emplace_back(field);
    return GroupSummaries(groups, summary);
}

void addFields(GroupSummaries& some, GroupSummaries& groups)
{
    for (std::size_t i = 0; i < groups.size(); ++i) {
        groups[i].records = some[i].records;
        groups[i].weight = some[i].weight;
        std::move(some[i].fields.begin(), some[i].fields.end(),
                  std::back_inserter(groups[i].fields));
    }
}

} // namespace

GroupSummaries summarizeGroups(const ComponentQueries& queries, const InputTable& table,
                               const DescriptivesSettings& settings, const std::string& partName)
{
    const std::size_t count = table.isGrouped() ? settings.groups : 1;
    GroupSummaries groups = emptySummaries({}, count);
    for (DataSummary& group : groups)
        group.weightField = settings.weight;
    if (table.keepsLeftOut())
        dropLeftOut(queries, table, groups);
    const Fields& fields = settings.fields;
    const InputTable part = fields.size() > kFieldsOfPart ? table.part(partName) : table;
    std::size_t next = 0;
    // Without fields, too, the records are counted.
    do {
        const std::size_t end = std::min(next + kFieldsOfPart, fields.size());
        const Fields some(fields.begin() + static_cast<std::ptrdiff_t>(next),
                          fields.begin() + static_cast<std::ptrdiff_t>(end));
        if (part.name() != table.name())
            queries.run(table.partCreation(part, some));
        GroupSummaries described = emptySummaries(some, count);
        fillStatistics(queries, part, settings, next, described);
        addFields(described, groups);
        next = end;
    } while (next < fields.size());
    return groups;
}

DataSummary summarize(const ComponentQueries& queries, const InputTable& table,
                      const DescriptivesSettings& settings, const std::string& partName)
{
    return std::move(summarizeGroups(queries, table, settings, partName).front());
}

} // namespace EmbeddedHV
