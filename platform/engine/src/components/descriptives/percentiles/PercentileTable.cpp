#include "components/descriptives/percentiles/PercentileTable.h"

#include "components/descriptives/model/SummaryText.h"
#include "components/descriptives/model/ValueDecimals.h"
#include "components/result/PivotTable.h"
#include "components/result/TextItem.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV {

Json percentileTable(const DataSummary& summary)
{
    std::vector<const FieldSummary*> fields;
    std::vector<Category> rows;
    for (const FieldSummary& field : summary.fields)
        if (!field.percentiles.empty()) {
            fields.push_back(&field);
            rows.emplace_back(text::field(field.field.GetName()));
        }
    if (fields.empty())
        return nullptr;
    std::vector<Category> columns;
    for (const Percentile& percentile : fields.front()->percentiles)
        columns.emplace_back(text::plain(numberText(percentile.percent)));
    PivotTable table("descriptives.percentiles", text::fixed("Percentiles"),
                     {{text::fixed("Fields"), "row", std::move(rows)},
                      {text::fixed("Statistics"),
                       "column",
                       {Category(text::fixed("Percentiles"), std::move(columns))},
                       true}});
    for (std::size_t row = 0; row < fields.size(); ++row)
        for (std::size_t column = 0; column < fields[row]->percentiles.size(); ++column) {
            table.set({row, column}, fields[row]->percentiles[column].value);
            table.format({row, column},
                         valueFormat(fields[row]->field, decimalsBetweenValues(*fields[row])));
        }
    return table.json();
}

} // namespace EmbeddedHV
