#include "components/descriptives/FrequencyTable.h"

#include <algorithm>

#include "components/result/PivotTable.h"
#include "components/result/TextItem.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

/// Longer tables are hard to read, and every reader holds all cells in memory.
constexpr std::size_t kMostRows = 10000;
constexpr int kDecimalsOfCounts = 3;

enum Column : std::size_t
{
    Frequency,
    Percent,
    ValidPercent,
    CumulativePercent
};

/// A text for the empty value. It differs from all other values.
std::string emptyText(const std::vector<ValueCount>& values)
{
    std::string text = "(empty)";
    const auto isTaken = [&](const ValueCount& count) {
        return count.value.IsString() && count.value.GetString() == text;
    };
    while (std::any_of(values.begin(), values.end(), isTaken))
        text.insert(0, 1, '(').push_back(')');
    return text;
}

std::vector<Category> categoriesOf(const CFField& field, const std::vector<ValueCount>& values)
{
    const std::string empty = emptyText(values);
    std::vector<Category> categories;
    categories.reserve(values.size());
    for (const ValueCount& count : values)
        categories.emplace_back(count.value.IsNull() ? text::fixed("System")
                                                     : text::value(field, count.value, empty));
    return categories;
}

/// Missing values get a total, unless they are a single row.
bool addsUpMissing(const FieldSummary& field)
{
    return field.missingValues.size() != 1;
}

std::vector<Category> rowsOf(const FieldSummary& field)
{
    std::vector<Category> valid = categoriesOf(field.field, field.distribution);
    valid.emplace_back(text::fixed("Total"));
    std::vector<Category> rows;
    rows.emplace_back(text::fixed("Valid"), std::move(valid));
    if (field.missing == 0)
        return rows;
    std::vector<Category> missing = categoriesOf(field.field, field.missingValues);
    if (addsUpMissing(field))
        missing.emplace_back(text::fixed("Total"));
    rows.emplace_back(text::fixed("Missing"), std::move(missing));
    rows.emplace_back(text::fixed("Total"));
    return rows;
}

std::vector<PivotTable::Dimension> dimensionsOf(const FieldSummary& field, bool weighted)
{
    std::vector<PivotTable::Dimension> dimensions;
    if (weighted)
        dimensions.push_back(
            {text::fixed("Counts"),
             "layer",
             {Category(text::fixed("Weighted")), Category(text::fixed("Unweighted"))}});
    dimensions.push_back({text::field(field.field.GetName()), "row", rowsOf(field)});
    dimensions.push_back(
        {text::fixed("Statistics"),
         "column",
         {Category(text::fixed("Frequency")), Category(text::fixed("Percent")),
          Category(text::fixed("Valid Percent")), Category(text::fixed("Cumulative Percent"))},
         true});
    return dimensions;
}

/// Fills one layer of the table with weights or with counts of records.
class Layer
{
public:
    Layer(PivotTable& table, const FieldSummary& field, std::optional<std::size_t> layer,
          bool weights)
        : _table(table), _layer(layer), _weights(weights),
          _valid(weights ? field.validWeight : static_cast<double>(field.valid)),
          _missing(weights ? field.missingWeight : static_cast<double>(field.missing))
    {
    }

    void fill(const FieldSummary& field)
    {
        formats();
        double sum = 0;
        for (const ValueCount& value : field.distribution) {
            sum += countOf(value);
            addValid(countOf(value));
            // For the row that was just added. Totals have no cumulative percentage.
            set(_row - 1, CumulativePercent, share(sum, _valid));
        }
        addValid(_valid);
        if (field.missing == 0)
            return;
        for (const ValueCount& value : field.missingValues)
            add(countOf(value));
        if (addsUpMissing(field))
            add(_missing);
        add(_valid + _missing);
    }

private:
    double countOf(const ValueCount& value) const
    {
        return _weights ? value.weight : static_cast<double>(value.records);
    }

    static std::optional<double> share(double part, double whole)
    {
        return whole > 0 ? std::optional(100 * part / whole) : std::nullopt;
    }

    PivotTable::Places placesOf(std::size_t row, std::size_t column) const
    {
        return _layer ? PivotTable::Places{*_layer, row, column} : PivotTable::Places{row, column};
    }

    void set(std::size_t row, Column column, std::optional<double> value)
    {
        _table.set(placesOf(row, column), value);
    }

    void add(double count)
    {
        set(_row, Frequency, count);
        set(_row, Percent, share(count, _valid + _missing));
        ++_row;
    }

    void addValid(double count)
    {
        set(_row, ValidPercent, share(count, _valid));
        add(count);
    }

    void formats()
    {
        _table.format(placesOf(CellKeys::kAny, Frequency),
                      numberFormat(_weights ? kDecimalsOfCounts : 0));
        Json percent = numberFormat(1);
        percent["suffix"] = "%";
        for (const Column column : {Percent, ValidPercent, CumulativePercent})
            _table.format(placesOf(CellKeys::kAny, column), percent);
    }

    PivotTable& _table;
    std::optional<std::size_t> _layer;
    bool _weights;
    double _valid;
    double _missing;
    std::size_t _row = 0;
};

} // namespace

bool hasFrequencies(const FieldSummary& field)
{
    return !field.distribution.empty() && field.distribution.size() <= kMostRows;
}

Json frequencyTable(const FieldSummary& field, const std::string& key, bool weighted)
{
    PivotTable table("descriptives.frequencies." + key, text::field(field.field.GetName()),
                     dimensionsOf(field, weighted));
    if (weighted)
        Layer(table, field, 0, true).fill(field);
    Layer(table, field, weighted ? std::optional<std::size_t>(1) : std::nullopt, false).fill(field);
    return table.json();
}

} // namespace EmbeddedHV
