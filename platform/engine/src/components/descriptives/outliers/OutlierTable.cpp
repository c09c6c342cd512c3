#include "components/descriptives/outliers/OutlierTable.h"

#include "components/descriptives/model/ValueDecimals.h"
#include "components/result/PivotTable.h"
#include "components/result/TextItem.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

constexpr int kDecimalsOfWeights = 3;

const char* methodText(OutlierMethod method)
{
    switch (method) {
    case StandardDeviation:
        return "Outliers are more than 3 standard deviations from the mean, extremes more than 6.";
    case MedianDeviation:
        return "Outliers have a modified z score beyond 3.5, extremes beyond 7.";
    default:
        return "Outliers are more than 1.5 interquartile ranges beyond the quartiles, extremes "
               "more than 3.";
    }
}

const char* handlingText(OutlierHandling handling)
{
    switch (handling) {
    case TrimOutliers:
        return "The statistics leave them out: they count as missing.";
    case WinsorizeOutliers:
        return "In the statistics they are replaced by the bound.";
    default:
        return "The statistics include them.";
    }
}

std::vector<Category> columnsFor(bool weighted)
{
    const auto sides = [](const char* title) {
        return Category(text::fixed(title),
                        {Category(text::fixed("Below")), Category(text::fixed("Above"))});
    };
    std::vector<Category> columns = {
        Category(text::fixed("Bounds"),
                 {Category(text::fixed("Lower")), Category(text::fixed("Upper"))}),
        sides("Outliers"), sides("Extremes")};
    if (weighted)
        columns.push_back(sides("Weight of outliers"));
    return columns;
}

void fillRow(PivotTable& table, std::size_t row, const FieldSummary& field, bool weighted)
{
    if (!field.outliers) {
        table.note({row, 0}, table.footnote(text::fixed("The values have no spread.")),
                   numberFormat(0));
        return;
    }
    const OutlierSummary& outliers = *field.outliers;
    table.set({row, 0}, outliers.lower);
    table.set({row, 1}, outliers.upper);
    for (const std::size_t column : {0U, 1U})
        table.format({row, column}, valueFormat(field.field, decimalsBetweenValues(field)));
    table.set({row, 2}, static_cast<double>(outliers.below.records));
    table.set({row, 3}, static_cast<double>(outliers.above.records));
    table.set({row, 4}, static_cast<double>(outliers.below.extremes));
    table.set({row, 5}, static_cast<double>(outliers.above.extremes));
    if (weighted) {
        table.set({row, 6}, outliers.below.weight);
        table.set({row, 7}, outliers.above.weight);
    }
}

} // namespace

Json outlierTable(const DataSummary& summary, const OutlierRule& rule)
{
    std::vector<const FieldSummary*> fields;
    std::vector<Category> rows;
    for (const FieldSummary& field : summary.fields)
        if (isNumber(field.field) && !isCategorical(field.field) && field.valid > 0) {
            fields.push_back(&field);
            rows.emplace_back(text::field(field.field.GetName()));
        }
    if (fields.empty())
        return nullptr;
    const bool weighted = summary.weightField.has_value();
    PivotTable table("descriptives.outliers", text::fixed("Outliers"),
                     {{text::fixed("Fields"), "row", std::move(rows)},
                      {text::fixed("Statistics"), "column", columnsFor(weighted), true}});
    for (std::size_t column = 2; column < 6; ++column)
        table.format({CellKeys::kAny, column}, numberFormat(0));
    if (weighted)
        for (const std::size_t column : {6U, 7U})
            table.format({CellKeys::kAny, column}, numberFormat(kDecimalsOfWeights));
    table.addCaption(text::fixed(methodText(rule.method)));
    table.addCaption(text::fixed(handlingText(rule.handling)));
    for (std::size_t row = 0; row < fields.size(); ++row)
        fillRow(table, row, *fields[row], weighted);
    return table.json();
}

} // namespace EmbeddedHV
