#include "components/temporal/scoring/EquationRefit.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_map>

#include <Eigen/QR>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/temporal/scoring/ModelAncestors.h"
#include "components/temporal/scoring/SeriesSystem.h"

namespace EmbeddedHV {
namespace {

/// The points of time at which an equation has all its values: a column of ones, the lagged values
/// and, last, the value that they predict.
struct CompletePoints
{
    std::vector<Eigen::Index> points;
    Eigen::MatrixXd values;
};

class Refit
{
public:
    Refit(const TcmModel& model, const SeriesTable& table, const std::string& component,
          const StopCheck& check)
        : _model(model), _table(table), _component(component), _check(check)
    {
        for (const std::string& id : table.ids)
            _columns.emplace(id, static_cast<Eigen::Index>(_columns.size()));
    }

    SeriesEquation refitted(const SeriesEquation& equation) const;

private:
    auto column(std::size_t place) const
    {
        return _table.values.col(_columns.at(_model.series[place].id));
    }
    CompletePoints completePoints(const SeriesEquation& equation) const;
    Eigen::VectorXd solution(const CompletePoints& data, std::size_t place) const;

    const TcmModel& _model;
    const SeriesTable& _table;
    const std::string& _component;
    const StopCheck& _check;
    std::unordered_map<std::string, Eigen::Index> _columns;
};

CompletePoints Refit::completePoints(const SeriesEquation& equation) const
{
    _check();
    const Eigen::Index rows = _table.values.rows();
    const auto terms = static_cast<Eigen::Index>(equation.terms.size());
    Eigen::MatrixXd all =
        Eigen::MatrixXd::Constant(rows, terms + 2, std::numeric_limits<double>::quiet_NaN());
    all.col(0).setOnes();
    for (Eigen::Index i = 0; i < terms; ++i) {
        const LaggedTerm& term = equation.terms[static_cast<std::size_t>(i)];
        const Eigen::Index count = std::max<Eigen::Index>(0, rows - term.lag);
        all.col(i + 1).tail(count) = column(term.series).head(count);
    }
    all.col(terms + 1) = column(equation.series);
    CompletePoints complete;
    for (Eigen::Index row = 0; row < rows; ++row)
        if (all.row(row).allFinite())
            complete.points.push_back(row);
    complete.values = all(complete.points, Eigen::all);
    return complete;
}

/// The coefficients that minimize the sum of squares, the intercept first.
Eigen::VectorXd Refit::solution(const CompletePoints& data, std::size_t place) const
{
    const Eigen::Index parameters = data.values.cols() - 1;
    // The upper triangle has the sums of squares of the data, in a few rows.
    const Eigen::MatrixXd triangle = crossProductRoot(data.values, _check).transpose();
    Eigen::MatrixXd left = triangle.leftCols(parameters);
    // Columns of one size, so that what is small beside others is not taken to be nothing.
    const Eigen::VectorXd sizes = left.colwise().norm().transpose();
    const bool areThere = sizes.allFinite() && (sizes.array() > 0).all();
    if (areThere)
        left = left * sizes.cwiseInverse().asDiagonal();
    const Eigen::ColPivHouseholderQR<Eigen::MatrixXd> qr(left);
    if (data.values.rows() <= parameters || !areThere || qr.rank() < parameters)
        throw JobError(
            errors::kRefitFailed,
            {.step = _component,
             .series = _model.series[place].name,
             .what = "the equation of the series " + shownName(_model.series[place]) +
                     " cannot be fitted to the records: " + std::to_string(data.values.rows()) +
                     " points of time have all its values, which do not determine its " +
                     std::to_string(parameters) + " coefficients"});
    return sizes.cwiseInverse().asDiagonal() * qr.solve(triangle.col(parameters));
}

SeriesEquation Refit::refitted(const SeriesEquation& equation) const
{
    const CompletePoints data = completePoints(equation);
    const Eigen::VectorXd coefficients = solution(data, equation.series);
    const Eigen::Index parameters = coefficients.size();
    const Eigen::VectorXd residuals =
        data.values.col(parameters) - data.values.leftCols(parameters) * coefficients;
    SeriesEquation fitted;
    fitted.series = equation.series;
    fitted.intercept = coefficients(0);
    fitted.terms = equation.terms;
    for (std::size_t i = 0; i < fitted.terms.size(); ++i)
        fitted.terms[i].coefficient = coefficients(static_cast<Eigen::Index>(i) + 1);
    fitted.residualVariance =
        residuals.squaredNorm() / static_cast<double>(residuals.size() - parameters);
    fitted.residuals.assign(static_cast<std::size_t>(_table.values.rows()),
                            std::numeric_limits<double>::quiet_NaN());
    for (std::size_t i = 0; i < data.points.size(); ++i)
        fitted.residuals[static_cast<std::size_t>(data.points[i])] =
            residuals(static_cast<Eigen::Index>(i));
    return fitted;
}

} // namespace

std::vector<SeriesEquation> refittedEquations(const TcmModel& model,
                                              const std::vector<const SeriesEquation*>& equations,
                                              const SeriesTable& table,
                                              const std::string& component, const StopCheck& check)
{
    const Refit refit(model, table, component, check);
    std::vector<SeriesEquation> fitted;
    fitted.reserve(equations.size());
    for (const SeriesEquation* equation : equations)
        fitted.push_back(refit.refitted(*equation));
    return fitted;
}

} // namespace EmbeddedHV
