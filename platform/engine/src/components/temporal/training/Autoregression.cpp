#include "components/temporal/training/Autoregression.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <Eigen/Dense>

#include "components/temporal/training/EquationFit.h"
#include "components/temporal/training/TrainingWindows.h"

namespace EmbeddedHV {
namespace {

/// A part of a lag outside the span of shorter lags that is smaller counts as none.
constexpr double kLeastNewPart = 3e-5;
/// A part of the target that is smaller is rounding.
constexpr double kLeastUnexplained = 1e-12;

double penaltyOf(SelectionCriterion criterion, double rows)
{
    return criterion == SelectionCriterion::Aic ? 2 : std::log(rows);
}

/// The order of the least criterion, by a QR decomposition that takes the lags in their order, so
/// that it gives the residual sum of squares of each order.
int orderOf(const Eigen::Ref<const Eigen::VectorXd>& values, int maxOrder,
            SelectionCriterion criterion)
{
    const Eigen::Index rows = values.size() - maxOrder;
    Eigen::MatrixXd design(rows, maxOrder);
    for (int lag = 1; lag <= maxOrder; ++lag)
        design.col(lag - 1) = values.segment(maxOrder - lag, rows);
    design.rowwise() -= design.colwise().mean().eval();
    const Eigen::VectorXd norms = design.colwise().norm();
    Eigen::VectorXd target = values.tail(rows).array() - values.tail(rows).mean();
    const double all = target.squaredNorm();
    const Eigen::HouseholderQR<Eigen::MatrixXd> decomposition(design);
    target.applyOnTheLeft(decomposition.householderQ().adjoint());
    const auto count = static_cast<double>(rows);
    double squares = all;
    double least = count * std::log(all / count);
    int best = 0;
    for (int order = 1; order <= maxOrder; ++order) {
        if (std::abs(decomposition.matrixQR()(order - 1, order - 1)) <=
            kLeastNewPart * norms[order - 1])
            break;
        squares =
            std::max(squares - target[order - 1] * target[order - 1], kLeastUnexplained * all);
        const double value =
            count * std::log(squares / count) + penaltyOf(criterion, count) * order;
        if (value < least) {
            least = value;
            best = order;
        }
    }
    return best;
}

} // namespace

std::optional<SeriesEquation> autoregressionFor(const SeriesTable& table,
                                                const ScaledSeries& series, std::size_t place,
                                                int maxOrder, SelectionCriterion criterion)
{
    const ScaledColumn& column = series.columns[place];
    if (column.state == SeriesState::Constant)
        return constantEquation(table, series, place);
    if (column.state == SeriesState::Excluded)
        return std::nullopt;
    const int most = std::min(maxOrder, mostLags(column.range.size()));
    int order = most > 0 ? orderOf(series.values.col(static_cast<Eigen::Index>(place))
                                       .segment(column.range.first, column.range.size()),
                                   most, criterion)
                         : 0;
    for (; order >= 0; --order) {
        std::vector<EquationGroup> own;
        if (order > 0) {
            own.push_back({place, std::vector<int>(static_cast<std::size_t>(order)), false});
            std::iota(own[0].lags.begin(), own[0].lags.end(), 1);
        }
        if (auto fitted = fitEquation(table, series, place, own))
            return std::move(fitted->equation);
    }
    return std::nullopt;
}

} // namespace EmbeddedHV
