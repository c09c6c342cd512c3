#include "hvhost/describe/DescriptionTables.h"

namespace {

using Cell = std::optional<std::string>;

/// A column of the statistics: its heading and its fact.
struct StatisticColumn
{
    const char* title;
    const char* fact;
};
constexpr StatisticColumn kCountColumns[] = {{"valid", "valid"}, {"missing", "missing"}};
constexpr StatisticColumn kWeights[] = {{"valid weight", "validWeight"},
                                        {"missing weight", "missingWeight"}};
constexpr StatisticColumn kValues[] = {
    {"mean", "mean"},         {"sd", "standardDeviation"}, {"min", "minimum"},
    {"max", "maximum"},       {"q1", "firstQuartile"},     {"median", "median"},
    {"q3", "thirdQuartile"},  {"skewness", "skewness"},    {"kurtosis", "kurtosis"},
    {"distinct", "distinct"},
};
constexpr StatisticColumn kOutliers[] = {{"lower bound", "lowerBound"},
                                         {"upper bound", "upperBound"},
                                         {"outliers below", "below"},
                                         {"outliers above", "above"}};

/// Adds columns to a table whose rows exist.
class ColumnAdder
{
public:
    ColumnAdder(ResultTable& table, const std::vector<FieldDescription>& fields)
        : _table(table), _fields(fields)
    {
    }

    template <class GetCell>
    void add(const char* title, GetCell cell)
    {
        _table.columns.push_back({title});
        for (std::size_t i = 0; i < _fields.size(); ++i)
            _table.rows[i].push_back(cell(_fields[i]));
    }
    template <std::size_t Count>
    void add(const StatisticColumn (&columns)[Count],
             Facts FieldDescription::*facts = &FieldDescription::facts)
    {
        for (const StatisticColumn& column : columns)
            add(column.title,
                [&](const FieldDescription& field) { return factOf(field.*facts, column.fact); });
    }

private:
    ResultTable& _table;
    const std::vector<FieldDescription>& _fields;
};

} // namespace

ResultTable statisticsTable(const Description& description, const GroupDescription& group)
{
    ResultTable table;
    table.keyCount = 1;
    table.rows.resize(group.fields.size());
    ColumnAdder columns(table, group.fields);
    columns.add("variable",
                [](const FieldDescription& field) { return Cell(field.field.GetName()); });
    columns.add(kCountColumns);
    if (!description.weight.empty())
        columns.add(kWeights);
    columns.add(kValues);
    for (std::size_t i = 0; i < description.percents.size(); ++i)
        columns.add(("p" + description.percents[i]).c_str(), [i](const FieldDescription& field) {
            return i < field.percentiles.size() ? factOf(field.percentiles[i], "value")
                                                : std::nullopt;
        });
    if (description.hasOutliers)
        columns.add(kOutliers, &FieldDescription::outliers);
    return table;
}
