#include "components/descriptives/pairs/PairTable.h"

#include <algorithm>
#include <cmath>

#include "components/result/PivotTable.h"
#include "components/result/TextItem.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostPairsShown = 1000;
constexpr int kDecimalsOfTests = 3;
constexpr int kDecimalsOfPairWeights = 3;

enum PairColumn : std::size_t
{
    Measure,
    Strength,
    Count,
    Test,
    TestStatistic,
    FirstFreedom,
    SecondFreedom,
    Significance
};

using ShownPairs = std::vector<const PairStatistic*>;

double sizeOf(const PairStatistic& pair)
{
    return std::abs(pair.association.strength.value_or(0));
}

/// All pairs, or the strongest in the order of the pairs.
ShownPairs shownPairs(const std::vector<PairStatistic>& pairs)
{
    ShownPairs shown;
    for (const PairStatistic& pair : pairs)
        shown.push_back(&pair);
    if (shown.size() <= kMostPairsShown)
        return shown;
    std::stable_sort(shown.begin(), shown.end(),
                     [](const auto* a, const auto* b) { return sizeOf(*a) > sizeOf(*b); });
    shown.resize(kMostPairsShown);
    std::sort(shown.begin(), shown.end());
    return shown;
}

/// A group for each first field, with the second fields of its pairs.
std::vector<Category> rowsFor(const DataSummary& summary, const ShownPairs& pairs)
{
    const auto nameOf = [&](std::size_t field) {
        return text::field(summary.fields[field].field.GetName());
    };
    std::vector<Category> rows;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        if (i == 0 || pairs[i]->first != pairs[i - 1]->first)
            rows.emplace_back(nameOf(pairs[i]->first));
        rows.back().members.emplace_back(nameOf(pairs[i]->second));
    }
    return rows;
}

std::vector<Category> columnsOfPairs()
{
    return {Category(text::fixed("Measure")), Category(text::fixed("Strength")),
            Category(text::fixed("N")),
            Category(text::fixed("Test"),
                     {Category(text::fixed("Statistic")), Category(text::fixed("Value")),
                      Category(text::fixed("df 1")), Category(text::fixed("df 2")),
                      Category(text::fixed("Sig."))})};
}

std::pair<const char*, const char*> wordsOf(PairMeasure measure)
{
    switch (measure) {
    case PairMeasure::Correlation:
        return {"Pearson's r", "t"};
    case PairMeasure::Eta:
        return {"Eta", "F"};
    default:
        return {"Cramer's V", "Chi-square"};
    }
}

/// A small probability is never shown as 0, even if it is too small for a double.
void setSignificance(PivotTable& table, std::size_t row, double p)
{
    constexpr double kLeastShown = 0.0005;
    if (p < kLeastShown)
        table.setText({row, Significance}, text::fixed("<0.001"));
    else
        table.set({row, Significance}, p);
}

void fillPair(PivotTable& table, std::size_t row, const PairStatistic& pair, bool weighted)
{
    const auto [measure, test] = wordsOf(pair.measure);
    const Association& found = pair.association;
    table.setText({row, Measure}, text::fixed(measure));
    table.set({row, Strength}, found.strength);
    table.set({row, Count}, weighted ? pair.weight : static_cast<double>(pair.records));
    if (!found.strength) {
        table.note({row, Strength},
                   table.footnote(text::fixed("There are too few values, or they are all equal.")),
                   numberFormat(kDecimalsOfTests));
        return;
    }
    table.setText({row, Test}, text::fixed(test));
    table.set({row, TestStatistic}, found.statistic);
    table.set({row, FirstFreedom}, found.firstFreedom);
    table.set({row, SecondFreedom}, found.secondFreedom);
    setSignificance(table, row, found.p.value_or(0));
}

void setFormats(PivotTable& table, bool weighted)
{
    for (const PairColumn column : {Strength, TestStatistic, Significance})
        table.format({CellKeys::kAny, column}, numberFormat(kDecimalsOfTests));
    // Degrees of freedom are sums of weights too.
    const Json counts = numberFormat(weighted ? kDecimalsOfPairWeights : 0);
    for (const PairColumn column : {Count, FirstFreedom, SecondFreedom})
        table.format({CellKeys::kAny, column}, counts);
}

} // namespace

Json pairTable(const DataSummary& summary)
{
    if (summary.pairs.empty())
        return nullptr;
    const ShownPairs pairs = shownPairs(summary.pairs);
    const bool weighted = summary.weightField.has_value();
    PivotTable table("descriptives.pairs", text::fixed("Pairs of Fields"),
                     {{text::fixed("Fields"), "row", rowsFor(summary, pairs)},
                      {text::fixed("Statistics"), "column", columnsOfPairs(), true}});
    setFormats(table, weighted);
    table.addCaption(text::fixed("Records with a value in both fields."));
    if (pairs.size() < summary.pairs.size())
        table.addCaption(text::composite(
            {text::fixed("Only the strongest pairs are shown. All pairs: "),
             text::number(static_cast<double>(summary.pairs.size()), numberFormat(0))}));
    for (std::size_t row = 0; row < pairs.size(); ++row)
        fillPair(table, row, *pairs[row], weighted);
    return table.json();
}

} // namespace EmbeddedHV
