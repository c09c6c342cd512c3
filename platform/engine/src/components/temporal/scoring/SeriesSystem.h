#pragma once

#include <string>
#include <vector>

#include <Eigen/Core>
#include <Eigen/SparseCore>

#include "components/temporal/base/StopCheck.h"
#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// The coefficients of the values that lie one lag back: a row for each predicted series, a
/// column for each series that it is predicted from.
using LagCoefficients = Eigen::SparseMatrix<double, Eigen::RowMajor>;

/// Equations of several series as one system: y[t] = c + A1 y[t-1] + A2 y[t-2] + ... + e[t].
struct SeriesSystem
{
    std::vector<std::size_t> places; ///< of the series in the model, in the order of the system
    Eigen::VectorXd intercepts;
    std::vector<LagCoefficients> coefficients; ///< of lag 1, 2, ...
    /// F, a row a series: the covariance of the innovations e is F F'.
    Eigen::MatrixXd innovations;

    Eigen::Index size() const { return intercepts.size(); }
    Eigen::Index lags() const { return static_cast<Eigen::Index>(coefficients.size()); }
    /// What the equations give for the point of time in column `point` of the values, a row a
    /// series, from the columns before. Not-a-number where a value is missing or lies before the
    /// first column.
    Eigen::VectorXd prediction(const Eigen::MatrixXd& values, Eigen::Index point) const;
};

/// The system of equations whose terms are all of series among them. Throws what `check` throws.
SeriesSystem systemOf(const std::vector<const SeriesEquation*>& equations, const StopCheck& check);

/// The lower triangular matrix L of a tall matrix X with L L' = X' X. Throws what `check` throws.
Eigen::MatrixXd crossProductRoot(const Eigen::MatrixXd& tall, const StopCheck& check);

} // namespace EmbeddedHV
