#include "components/descriptives/summary/Summaries.h"

#include <algorithm>
#include <iterator>

#include "components/descriptives/summary/DistinctValues.h"
#include "components/descriptives/summary/FieldParts.h"
#include "components/descriptives/summary/Histogram.h"
#include "components/descriptives/summary/MomentPass.h"
#include "components/descriptives/summary/Quartiles.h"
#include "components/descriptives/summary/ValueCounts.h"

namespace EmbeddedHV {
namespace {

/// A SELECT with one result row. Its columns are added and read in the same order.
class OneRow
{
public:
    void add(const std::string& sql) { _columns += (_columns.empty() ? "" : ", ") + sql; }
    bool empty() const { return _columns.empty(); }
    void run(const ComponentQueries& queries, const std::string& from)
    {
        _result = queries.run("SELECT " + _columns + " FROM " + from);
    }
    std::int64_t integer() { return _result.integer(_next++, 0); }
    std::string text() { return _result.text(_next++, 0); }
    std::optional<double> real() { return _result.real(_next++, 0); }

private:
    std::string _columns;
    duck::Result _result;
    std::size_t _next = 0;
};

/// Counts and ranges of all fields, in one pass.
class CountPass
{
public:
    CountPass(const InputTable& table, bool ranges) : _table(table), _ranges(ranges) {}

    void run(const ComponentQueries& queries, DataSummary& summary)
    {
        _row.add("count(*)");
        for (const FieldSummary& field : summary.fields)
            ask(field.field);
        _row.run(queries, _table.name());
        summary.records = _row.integer();
        for (FieldSummary& field : summary.fields)
            answer(summary, field);
    }

private:
    bool hasRange(const CFField& field) const
    {
        return _ranges && field.GetStorage() != CFField::String;
    }

    void ask(const CFField& field)
    {
        const std::string x = _table.column(field);
        _row.add("count(" + x + ")");
        if (hasRange(field)) {
            _row.add("CAST(min(" + x + ") AS VARCHAR)");
            _row.add("CAST(max(" + x + ") AS VARCHAR)");
        }
    }

    void answer(const DataSummary& whole, FieldSummary& field)
    {
        field.valid = _row.integer();
        field.missing = whole.records - field.valid;
        if (hasRange(field.field)) {
            field.minimum = _row.text();
            field.maximum = _row.text();
        }
    }

    const InputTable& _table;
    bool _ranges;
    OneRow _row;
};

/// The quartiles of all numeric fields, in one pass.
class QuartilePass
{
public:
    explicit QuartilePass(const InputTable& table) : _table(table) {}

    void run(const ComponentQueries& queries, DataSummary& summary)
    {
        for (const FieldSummary& field : summary.fields)
            if (field.numeric.mean)
                ask(field);
        if (_row.empty())
            return;
        _row.run(queries, _table.name());
        for (FieldSummary& field : summary.fields)
            if (field.numeric.mean)
                answer(field);
    }

private:
    void ask(const FieldSummary& field)
    {
        const std::string x = _table.column(field.field);
        // A list of quantiles is computed once. Three aggregates would each store and sort all
        // values.
        for (const char* place : {"[1]", "[2]", "[3]"})
            _row.add("quantile_cont(CAST(" + x + " AS DOUBLE), [0.25, 0.5, 0.75])" + place);
    }

    void answer(FieldSummary& field)
    {
        field.numeric.firstQuartile = _row.real();
        field.numeric.median = _row.real();
        field.numeric.thirdQuartile = _row.real();
    }

    const InputTable& _table;
    OneRow _row;
};

void takeWeightedQuartiles(const ComponentQueries& queries, const InputTable& table,
                           FieldSummary& field)
{
    const Quartiles quartiles =
        weightedQuartiles(queries, table, table.column(field.field), field.validWeight);
    field.numeric.firstQuartile = quartiles.first;
    field.numeric.median = quartiles.median;
    field.numeric.thirdQuartile = quartiles.third;
}

std::int64_t dropLeftOut(const ComponentQueries& queries, const InputTable& table)
{
    const std::string leftOut = " FROM " + table.name() + " WHERE w IS NULL";
    const std::int64_t count = queries.run("SELECT count(*)" + leftOut).integer(0, 0);
    if (count > 0)
        queries.run("DELETE" + leftOut);
    return count;
}

/// Statistics that only some documents contain.
void fillDetails(const ComponentQueries& queries, const InputTable& table,
                 const DescriptivesSettings& settings, DataSummary& summary)
{
    if (settings.wants(ContainerKind::Results) && settings.summaries)
        fillHistograms(queries, table, summary);
    if (settings.tellsMissing())
        for (FieldSummary& field : summary.fields)
            if (isCategorical(field.field))
                fillMissingValues(queries, table, field);
}

/// Fills in the statistics of the summary's fields, which are columns of the table. `before` fields
/// have their statistics already.
void fillStatistics(const ComponentQueries& queries, const InputTable& table,
                    const DescriptivesSettings& settings, std::size_t before, DataSummary& summary)
{
    CountPass(table, settings.summaries).run(queries, summary);
    sumUp(queries, table, settings.summaries, summary);
    if (!table.isWeighted())
        QuartilePass(table).run(queries, summary);
    for (FieldSummary& field : summary.fields) {
        if (table.isWeighted() && field.numeric.mean)
            takeWeightedQuartiles(queries, table, field);
        fillDistinctValues(queries, table, settings, summary.records, field);
        queries.progress(static_cast<double>(++before) /
                         static_cast<double>(settings.fields.size()));
    }
    fillDetails(queries, table, settings, summary);
}

} // namespace

DataSummary summarize(const ComponentQueries& queries, const InputTable& table,
                      const DescriptivesSettings& settings, const std::string& partName)
{
    DataSummary summary;
    summary.weightField = settings.weight;
    if (table.keepsLeftOut())
        summary.leftOut = dropLeftOut(queries, table);
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
        DataSummary described;
        for (const CFField& field : some)
            described.fields.emplace_back(field);
        fillStatistics(queries, part, settings, next, described);
        summary.records = described.records;
        summary.weight = described.weight;
        std::move(described.fields.begin(), described.fields.end(),
                  std::back_inserter(summary.fields));
        next = end;
    } while (next < fields.size());
    return summary;
}

} // namespace EmbeddedHV
