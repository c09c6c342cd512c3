#include "components/temporal/training/ScaledSeries.h"

#include <cmath>
#include <limits>

namespace EmbeddedHV {
namespace {

/// Beyond these, squares and the quotients of two scales leave the range of a double.
constexpr double kLargestMagnitude = 1e100;
constexpr double kSmallestMagnitude = 1e-100;
/// A spread that is smaller, relative to the values, is rounding.
constexpr double kLeastSpread = 1e-12;

TimeRange rangeOf(const Eigen::Ref<const Eigen::VectorXd>& values)
{
    TimeRange range{0, values.size()};
    while (range.first < range.end && std::isnan(values[range.first]))
        ++range.first;
    while (range.end > range.first && std::isnan(values[range.end - 1]))
        --range.end;
    return range;
}

/// Why no model can hold the values; empty if one can.
std::string problemOf(const Eigen::Ref<const Eigen::VectorXd>& values)
{
    if (values.size() == 0)
        return "has no values";
    for (const double value : values) {
        if (std::isnan(value))
            return "has missing values between others";
        if (std::isinf(value))
            return "has an infinite value";
    }
    const double largest = values.cwiseAbs().maxCoeff();
    if (largest > kLargestMagnitude)
        return "has numbers beyond 1e100";
    if (largest > 0 && largest < kSmallestMagnitude)
        return "has only numbers below 1e-100";
    return {};
}

ScaledColumn columnOf(const Eigen::Ref<const Eigen::VectorXd>& all)
{
    ScaledColumn column;
    column.range = rangeOf(all);
    const auto values = all.segment(column.range.first, column.range.size());
    column.problem = problemOf(values);
    if (!column.problem.empty())
        return column;
    column.largest = values.cwiseAbs().maxCoeff();
    column.center = values.mean();
    if (values.maxCoeff() - values.minCoeff() <= kLeastSpread * column.largest) {
        column.state = SeriesState::Constant;
        column.problem = "is constant";
        return column;
    }
    column.scale = std::sqrt((values.array() - column.center).square().mean());
    if (column.scale < kSmallestMagnitude) {
        column.problem = "varies by less than 1e-100";
        return column;
    }
    column.state = SeriesState::Usable;
    return column;
}

} // namespace

ScaledSeries scaledSeries(const SeriesTable& table)
{
    ScaledSeries scaled;
    scaled.values = Eigen::MatrixXd::Zero(table.values.rows(), table.values.cols());
    for (Eigen::Index i = 0; i < table.values.cols(); ++i) {
        const ScaledColumn column = columnOf(table.values.col(i));
        if (column.state == SeriesState::Usable)
            scaled.values.col(i).segment(column.range.first, column.range.size()) =
                (table.values.col(i).segment(column.range.first, column.range.size()).array() -
                 column.center) /
                column.scale;
        scaled.columns.push_back(column);
    }
    return scaled;
}

} // namespace EmbeddedHV
