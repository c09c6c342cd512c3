#include "components/statistics/AssociationTests.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "components/statistics/Distributions.h"

namespace EmbeddedHV {
namespace {

std::optional<double> finite(double value)
{
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

/// C++ does not define a division by 0.
double ratio(double value, double divisor)
{
    return divisor > 0 ? value / divisor : std::numeric_limits<double>::infinity();
}

/// A correlation that differs from 1 or -1 by its rounding only is 1 or -1.
double unitRounded(double r)
{
    constexpr double kRounding = 1e-15;
    return std::abs(r) >= 1 - kRounding ? std::copysign(1.0, r) : r;
}

std::size_t positives(const std::vector<double>& weights)
{
    return static_cast<std::size_t>(
        std::count_if(weights.begin(), weights.end(), [](double weight) { return weight > 0; }));
}

/// The sums of the rows and of the columns.
struct Margins
{
    explicit Margins(const Contingency& table) : rows(table.rows), columns(table.columns)
    {
        for (const Contingency::Cell& cell : table.cells) {
            rows[cell.row] += cell.weight;
            columns[cell.column] += cell.weight;
        }
        for (const double row : rows)
            total += row;
    }

    std::vector<double> rows;
    std::vector<double> columns;
    double total = 0;
};

/// An empty cell adds its expected weight, so a row adds what its other cells leave of its margin.
double chiSquared(const Contingency& table, const Margins& margins)
{
    std::vector<double> emptyColumns(table.rows, margins.total);
    std::vector<std::size_t> emptyCells(table.rows, positives(margins.columns));
    double sum = 0;
    for (const Contingency::Cell& cell : table.cells) {
        const double column = margins.columns[cell.column];
        const double expected = margins.rows[cell.row] / margins.total * column;
        const double difference = cell.weight - expected;
        sum += difference * difference / expected;
        emptyColumns[cell.row] -= column;
        --emptyCells[cell.row];
    }
    for (std::size_t row = 0; row < table.rows; ++row)
        // Without an empty cell, only a rounding error is left.
        if (emptyCells[row] > 0)
            sum += margins.rows[row] / margins.total * std::max(emptyColumns[row], 0.0);
    return sum;
}

/// The sums of all groups, and SSB and SSW.
struct Variation
{
    explicit Variation(const std::vector<GroupSums>& groups)
    {
        for (const GroupSums& group : groups) {
            if (!(group.weight > 0))
                continue;
            ++count;
            all.weight += group.weight;
            all.sum += group.sum;
            all.squares += group.squares;
            within += std::max(group.squares - group.sum * group.sum / group.weight, 0.0);
        }
        // The distances of the means keep their digits if all means are far from 0.
        for (const GroupSums& group : groups)
            if (group.weight > 0) {
                const double distance = group.sum / group.weight - all.sum / all.weight;
                between += group.weight * distance * distance;
            }
    }

    GroupSums all;
    double count = 0;
    double between = 0;
    double within = 0;
};

} // namespace

Association correlation(const PairMoments& moments)
{
    Association result;
    const double weight = moments.weight;
    if (!(weight > 2))
        return result;
    const double spreadX = moments.squareX - moments.sumX * moments.sumX / weight;
    const double spreadY = moments.squareY - moments.sumY * moments.sumY / weight;
    const double shared = moments.product - moments.sumX * moments.sumY / weight;
    // Equal values leave only a rounding error of the sums.
    constexpr double kNothing = 1e-14;
    if (!(spreadX > kNothing * moments.squareX) || !(spreadY > kNothing * moments.squareY))
        return result;
    const double r = unitRounded(shared / std::sqrt(spreadX) / std::sqrt(spreadY));
    const double freedom = weight - 2;
    const double t = r * std::sqrt(ratio(freedom, (1 - r) * (1 + r)));
    result.strength = r;
    result.statistic = finite(t);
    result.firstFreedom = freedom;
    result.p = twoSidedT(t, freedom);
    return result;
}

bool areOffCentre(const std::vector<GroupSums>& groups)
{
    constexpr double kFew = 1e-2;
    double squares = 0;
    double within = 0;
    for (const GroupSums& group : groups)
        if (group.weight > 0) {
            squares += group.squares;
            within += group.squares - group.sum * group.sum / group.weight;
        }
    return within < kFew * squares;
}

Association correlationRatio(const std::vector<GroupSums>& groups, std::optional<double> known)
{
    const Variation variation(groups);
    // Equal values leave only the rounding of their means.
    const double nothing = 1e-28 * variation.all.squares;
    const double between = variation.between;
    double within = known.value_or(variation.within);
    if (within < nothing)
        within = 0;
    const double count = variation.count;
    const double freedom = variation.all.weight - count;
    Association result;
    if (count < 2 || !(freedom > 0) || !(between + within > nothing))
        return result;
    const double f = ratio(between / (count - 1), within / freedom);
    result.strength = std::sqrt(between / (between + within));
    result.statistic = finite(f);
    result.firstFreedom = count - 1;
    result.secondFreedom = freedom;
    result.p = upperF(f, count - 1, freedom);
    return result;
}

Association contingency(const Contingency& table)
{
    Association result;
    const Margins margins(table);
    const std::size_t rows = positives(margins.rows);
    const std::size_t columns = positives(margins.columns);
    if (rows < 2 || columns < 2)
        return result;
    const double statistic = chiSquared(table, margins);
    const auto smaller = static_cast<double>(std::min(rows, columns) - 1);
    result.strength = std::min(std::sqrt(statistic / margins.total / smaller), 1.0);
    result.statistic = finite(statistic);
    result.firstFreedom = static_cast<double>((rows - 1) * (columns - 1));
    result.p = upperChiSquared(statistic, *result.firstFreedom);
    return result;
}

} // namespace EmbeddedHV
