#include "components/statistics/CategoryMerging.h"

#include <algorithm>

namespace EmbeddedHV {
namespace {

constexpr double kSignificance = 0.05;

struct RowGroup
{
    std::vector<std::size_t> rows;
    std::vector<double> weights; ///< for each column
};

std::vector<RowGroup> singleRows(const Contingency& table)
{
    std::vector<RowGroup> groups;
    for (std::size_t row = 0; row < table.rows; ++row)
        groups.push_back({{row}, std::vector<double>(table.columns)});
    for (const Contingency::Cell& cell : table.cells)
        groups[cell.row].weights[cell.column] = cell.weight;
    return groups;
}

/// 1 if the groups cannot be told apart because they have weights in one column only.
double similarity(const RowGroup& a, const RowGroup& b)
{
    Contingency two{2, a.weights.size(), {}};
    for (std::size_t row = 0; row < 2; ++row)
        for (std::size_t column = 0; column < two.columns; ++column)
            if (const double weight = (row == 0 ? a : b).weights[column]; weight > 0)
                two.cells.push_back({row, column, weight});
    return contingency(two).p.value_or(1);
}

void join(std::vector<RowGroup>& groups, std::size_t into, std::size_t from)
{
    RowGroup& target = groups[into];
    const RowGroup& source = groups[from];
    target.rows.insert(target.rows.end(), source.rows.begin(), source.rows.end());
    for (std::size_t column = 0; column < target.weights.size(); ++column)
        target.weights[column] += source.weights[column];
    groups.erase(groups.begin() + static_cast<std::ptrdiff_t>(from));
}

/// Joins the two most similar groups. Returns whether there were two similar ones.
bool joinMostSimilar(std::vector<RowGroup>& groups, bool ordered)
{
    double best = kSignificance;
    std::size_t into = 0;
    std::size_t from = 0;
    for (std::size_t i = 0; i < groups.size(); ++i)
        for (std::size_t j = i + 1; j < (ordered ? std::min(i + 2, groups.size()) : groups.size());
             ++j)
            if (const double p = similarity(groups[i], groups[j]); p > best) {
                best = p;
                into = i;
                from = j;
            }
    if (from == 0)
        return false;
    join(groups, into, from);
    return true;
}

} // namespace

std::vector<std::vector<std::size_t>> mergedRows(const Contingency& table, bool ordered)
{
    std::vector<RowGroup> groups = singleRows(table);
    while (joinMostSimilar(groups, ordered)) {
    }
    std::vector<std::vector<std::size_t>> result;
    for (RowGroup& group : groups) {
        std::sort(group.rows.begin(), group.rows.end());
        result.push_back(std::move(group.rows));
    }
    return result;
}

} // namespace EmbeddedHV
