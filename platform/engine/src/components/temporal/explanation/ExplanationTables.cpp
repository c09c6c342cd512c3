#include "components/temporal/explanation/ExplanationTables.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "components/result/PivotTable.h"
#include "components/result/TextItem.h"
#include "components/result/ValueFormat.h"
#include "components/temporal/explanation/DataOutliers.h"
#include "components/temporal/model/FitMembers.h"

namespace EmbeddedHV::explanation {
namespace {

/// Decimals that depend on the size of each number.
constexpr int kBySize = -1;
constexpr int kDigitsBySize = 4;
/// Data of another kind than those of the training may have nothing but outliers.
constexpr std::size_t kMostShownOutliers = 5000;

struct NumberColumn
{
    const char* title;
    int decimals;
};

constexpr NumberColumn kFitColumns[] = {
    {"N", 0},          {"Parameters", 0},    {"R Squared", 3},   {"Adjusted R Squared", 3},
    {"RMSE", kBySize}, {"RMSPE", kBySize},   {"MAE", kBySize},   {"AIC", 2},
    {"BIC", 2},        {"Durbin-Watson", 3}, {"Ljung-Box Q", 2}, {"Ljung-Box Sig.", 3},
};
constexpr NumberColumn kEffectColumns[] = {{"Lag", 0},
                                           {"Sum of Coefficients", kBySize},
                                           {"Strength", 3},
                                           {"F", 2},
                                           {"Sig.", 3}};
constexpr NumberColumn kContribution = {"Contribution to Latest Change", kBySize};
constexpr NumberColumn kOutlierColumns[] = {{"Actual", kBySize},
                                            {"Predicted", kBySize},
                                            {"Residual", kBySize},
                                            {"Sig.", 4}};

using Row = std::vector<std::optional<double>>;

/// Rows of numbers in groups, each with a label.
class GroupedRows
{
public:
    void startGroup(Json label) { _groups.emplace_back(std::move(label)); }
    void add(Json label, Row row)
    {
        _groups.back().members.emplace_back(std::move(label));
        _rows.push_back(std::move(row));
    }

    /// The table; nothing without rows. A group without a label gives its rows to the table.
    std::optional<Json> table(const std::string& id, Json title, const char* rowName,
                              const std::vector<NumberColumn>& columns) const
    {
        if (_rows.empty())
            return std::nullopt;
        std::vector<Category> titles;
        titles.reserve(columns.size());
        for (const NumberColumn& column : columns)
            titles.emplace_back(text::fixed(column.title));
        PivotTable table(id, std::move(title),
                         {{text::fixed(rowName), "row", shownGroups()},
                          {text::fixed("Statistics"), "column", std::move(titles), true}});
        for (std::size_t column = 0; column < columns.size(); ++column)
            fill(table, column, columns[column].decimals);
        return table.json();
    }

private:
    std::vector<Category> shownGroups() const
    {
        std::vector<Category> shown;
        for (const Category& group : _groups) {
            if (group.members.empty())
                continue;
            if (group.text.is_null())
                shown.insert(shown.end(), group.members.begin(), group.members.end());
            else
                shown.push_back(group);
        }
        return shown;
    }

    /// The format of the whole column is the one that most cells need: a large table has few
    /// formats of single cells.
    void fill(PivotTable& table, std::size_t column, int decimals) const
    {
        const int common = decimals == kBySize ? commonDecimals(column) : decimals;
        table.format({CellKeys::kAny, column}, numberFormat(common));
        for (std::size_t row = 0; row < _rows.size(); ++row) {
            const std::optional<double>& value = _rows[row][column];
            table.set({row, column}, value);
            if (decimals == kBySize && value && decimalsBySize(*value) != common)
                table.format({row, column}, numberFormat(decimalsBySize(*value)));
        }
    }

    int commonDecimals(std::size_t column) const
    {
        std::array<std::size_t, kMostDecimals + 1> counts = {};
        for (const Row& row : _rows)
            if (row[column])
                ++counts[static_cast<std::size_t>(decimalsBySize(*row[column]))];
        return static_cast<int>(std::max_element(counts.begin(), counts.end()) - counts.begin());
    }

    static int decimalsBySize(double value)
    {
        if (value == 0 || !std::isfinite(value))
            return 0;
        const double decimals = kDigitsBySize - 1 - std::floor(std::log10(std::abs(value)));
        return static_cast<int>(std::clamp(decimals, 0.0, static_cast<double>(kMostDecimals)));
    }

    std::vector<Category> _groups;
    std::vector<Row> _rows;
};

Row effectRow(const CausalEdge& edge)
{
    return {edge.lag, edge.sum, edge.strength, edge.fStatistic, edge.pValue};
}

Json shown(const Explanation& explanation, std::size_t place)
{
    return text::plain(explanation.textOf(place));
}

template <std::size_t N>
std::vector<NumberColumn> listOf(const NumberColumn (&columns)[N])
{
    return {columns, columns + N};
}

} // namespace

std::optional<Json> fitTable(const Explanation& explanation)
{
    GroupedRows rows;
    rows.startGroup(nullptr);
    for (const SeriesEquation& equation : explanation.model().equations) {
        explanation.check();
        Row row{static_cast<double>(equation.fit.observations), equation.fit.parameters};
        for (const FitMember& member : kFitMembers)
            row.push_back(equation.fit.*member.value);
        rows.add(shown(explanation, equation.series), std::move(row));
    }
    return rows.table("temporalCausalModel.fit", text::fixed("Model Fit"), "Targets",
                      listOf(kFitColumns));
}

std::optional<Json> edgeTable(const Explanation& explanation)
{
    const CausalNetwork& network = explanation.network();
    GroupedRows rows;
    for (std::size_t place = 0; place < network.seriesCount(); ++place) {
        explanation.check();
        rows.startGroup(shown(explanation, place));
        if (const CausalEdge* own = network.ownPastOf(place))
            rows.add(text::fixed("Own past"), effectRow(*own));
        for (const std::size_t number : network.causesOf(place))
            rows.add(shown(explanation, network.edges()[number].from),
                     effectRow(network.edges()[number]));
    }
    return rows.table("temporalCausalModel.edges", text::fixed("Predictors of the Targets"),
                      "Targets", listOf(kEffectColumns));
}

std::optional<Json> outlierTable(const Explanation& explanation)
{
    GroupedRows rows;
    std::optional<std::size_t> last;
    for (const SeriesOutlier& outlier : leastLikely(explanation.outliers(), kMostShownOutliers)) {
        explanation.check();
        if (last != outlier.series)
            rows.startGroup(shown(explanation, outlier.series));
        last = outlier.series;
        rows.add(text::plain(explanation.labels().text(outlier.timeIndex)),
                 {outlier.actual, outlier.predicted, outlier.actual - outlier.predicted,
                  outlier.pValue});
    }
    const std::size_t count = explanation.outliers().size();
    const std::string title = count <= kMostShownOutliers
                                  ? "Outliers"
                                  : "The " + std::to_string(kMostShownOutliers) +
                                        " Least Likely of " + std::to_string(count) + " Outliers";
    return rows.table("temporalCausalModel.outliers", text::fixed(title), "Targets",
                      listOf(kOutlierColumns));
}

std::optional<Json> impactTable(const Explanation& explanation, const ImpactDiagram& diagram,
                                const std::string& key)
{
    const bool isEffects = diagram.direction == ImpactDirection::Effects;
    std::vector<std::int64_t> levels(explanation.network().seriesCount(), 0);
    for (const ImpactNode& node : diagram.nodes)
        levels[node.series] = node.level;
    GroupedRows rows;
    std::int64_t level = 0;
    for (const std::size_t number : diagram.edges) {
        explanation.check();
        const CausalEdge& edge = explanation.network().edges()[number];
        // Edges come by the level of the end that is nearer to the series asked for.
        const std::int64_t edgeLevel = levels[isEffects ? edge.from : edge.to] + 1;
        if (edgeLevel != level)
            rows.startGroup(
                text::composite({text::fixed("Level "), text::plain(std::to_string(edgeLevel))}));
        level = edgeLevel;
        Row row = effectRow(edge);
        row.push_back(explanation.contributionOf(edge));
        rows.add(
            text::plain(explanation.textOf(edge.from) + " \u2192 " + explanation.textOf(edge.to)),
            std::move(row));
    }
    std::vector<NumberColumn> columns = listOf(kEffectColumns);
    if (explanation.data())
        columns.push_back(kContribution);
    return rows.table("temporalCausalModel." + key,
                      text::composite({text::fixed(isEffects ? "Effects of " : "Causes of "),
                                       shown(explanation, diagram.nodes.front().series)}),
                      "Levels", columns);
}

} // namespace EmbeddedHV::explanation
