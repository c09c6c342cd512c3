#include "components/descriptives/missing/MissingPatternTable.h"

#include "components/result/PivotTable.h"
#include "components/result/TextItem.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

constexpr int kPatternWeightDecimals = 3;
constexpr double kWhole = 100;

Json titleOf(const DataSummary& summary, const MissingPattern& pattern)
{
    if (pattern.fields.empty())
        return text::fixed("None");
    std::vector<Json> names;
    for (const std::size_t field : pattern.fields) {
        if (!names.empty())
            names.push_back(text::plain(", "));
        names.push_back(text::field(summary.fields[field].field.GetName()));
    }
    return text::composite(std::move(names));
}

} // namespace

Json missingPatternTable(const DataSummary& summary)
{
    if (!summary.missingPatterns || summary.missingPatterns->listed.empty())
        return nullptr;
    const MissingPatterns& patterns = *summary.missingPatterns;
    const bool weighted = summary.weightField.has_value();
    std::vector<Category> rows;
    for (const MissingPattern& pattern : patterns.listed)
        rows.emplace_back(titleOf(summary, pattern));
    PivotTable table("descriptives.missingPatterns", text::fixed("Missing Patterns"),
                     {{text::fixed("Missing Fields"), "row", std::move(rows)},
                      {text::fixed("Statistics"),
                       "column",
                       {Category(text::fixed("Frequency")), Category(text::fixed("Percent"))},
                       true}});
    table.format({CellKeys::kAny, 0}, numberFormat(weighted ? kPatternWeightDecimals : 0));
    Json percent = numberFormat(1);
    percent["suffix"] = "%";
    table.format({CellKeys::kAny, 1}, percent);
    const double all = weighted ? summary.weight : static_cast<double>(summary.records);
    for (std::size_t row = 0; row < patterns.listed.size(); ++row) {
        const MissingPattern& pattern = patterns.listed[row];
        const double count = weighted ? pattern.weight : static_cast<double>(pattern.records);
        table.set({row, 0}, count);
        table.set({row, 1}, kWhole * count / all);
    }
    if (patterns.count > static_cast<std::int64_t>(patterns.listed.size()))
        table.addCaption(text::composite(
            {text::fixed("Only the most frequent patterns are shown. All patterns: "),
             text::number(static_cast<double>(patterns.count), numberFormat(0))}));
    return table.json();
}

} // namespace EmbeddedHV
