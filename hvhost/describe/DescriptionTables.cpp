#include "hvhost/describe/DescriptionTables.h"

#include <algorithm>

namespace {

using Cell = std::optional<std::string>;

/// A column of the statistics: its heading, its fact, and its storage.
struct StatisticColumn
{
    const char* title;
    const char* fact;
    CFField::StorageType storage;
};
constexpr StatisticColumn kCountColumns[] = {{"valid", "valid", CFField::Integer},
                                             {"missing", "missing", CFField::Integer}};
constexpr StatisticColumn kWeights[] = {{"valid weight", "validWeight", CFField::Real},
                                        {"missing weight", "missingWeight", CFField::Real}};
constexpr StatisticColumn kMomentColumns[] = {{"mean", "mean", CFField::Real},
                                              {"sd", "standardDeviation", CFField::Real}};
constexpr StatisticColumn kRange[] = {{"min", "minimum", CFField::String},
                                      {"max", "maximum", CFField::String}};
constexpr StatisticColumn kShape[] = {{"q1", "firstQuartile", CFField::Real},
                                      {"median", "median", CFField::Real},
                                      {"q3", "thirdQuartile", CFField::Real},
                                      {"skewness", "skewness", CFField::Real},
                                      {"kurtosis", "kurtosis", CFField::Real}};

bool isNumeric(const FieldDescription& field)
{
    return field.field.GetStorage() == CFField::Real ||
           field.field.GetStorage() == CFField::Integer;
}

/// Adds columns to a table whose rows exist.
class ColumnAdder
{
public:
    ColumnAdder(ResultTable& table, const std::vector<FieldDescription>& fields)
        : _table(table), _fields(fields)
    {
    }

    template <class GetCell>
    void add(const char* title, CFField::StorageType storage, GetCell cell)
    {
        _table.columns.push_back({title, storage});
        for (std::size_t i = 0; i < _fields.size(); ++i)
            _table.rows[i].push_back(cell(_fields[i]));
    }
    template <std::size_t Count>
    void add(const StatisticColumn (&columns)[Count])
    {
        for (const StatisticColumn& column : columns)
            add(column.title, column.storage,
                [&](const FieldDescription& field) { return factOf(field.facts, column.fact); });
    }

private:
    ResultTable& _table;
    const std::vector<FieldDescription>& _fields;
};

/// If there are dates among the fields, minimum and maximum are texts, else numbers.
void setRangeStorage(ResultTable& table, const std::vector<FieldDescription>& fields)
{
    const bool allNumbers = std::all_of(fields.begin(), fields.end(), [](const auto& field) {
        return isNumeric(field) || !field.facts.contains("minimum");
    });
    for (ResultTable::Column& column : table.columns)
        if (allNumbers && (column.name == "min" || column.name == "max"))
            column.storage = CFField::Real;
}

} // namespace

ResultTable statisticsTable(const Description& description, const GroupDescription& group)
{
    ResultTable table;
    table.keyCount = 1;
    table.rows.resize(group.fields.size());
    ColumnAdder columns(table, group.fields);
    columns.add("variable", CFField::String,
                [](const FieldDescription& field) { return Cell(field.field.GetName()); });
    columns.add(kCountColumns);
    if (!description.weight.empty())
        columns.add(kWeights);
    columns.add(kMomentColumns);
    columns.add(kRange);
    setRangeStorage(table, group.fields);
    columns.add(kShape);
    columns.add("distinct", CFField::Integer,
                [](const FieldDescription& field) { return factOf(field.facts, "distinct"); });
    return table;
}
