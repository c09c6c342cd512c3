#include "components/temporal/scoring/PredictionErrors.h"

#include <algorithm>

namespace EmbeddedHV {
namespace {

/// Columns of the innovations' factor that go through the system together: bounds the memory.
constexpr Eigen::Index kFactorsAtOnce = 512;
/// An error whose variance is a smaller part of each innovation's is not carried on.
constexpr double kNegligible = 1e-18;

/// Carries innovations through the system: the weights of its moving-average form.
class ErrorPropagation
{
public:
    ErrorPropagation(const SeriesPath& path, const SeriesSystem& system, Eigen::Index count,
                     const StopCheck& check)
        : _path(path), _system(system), _count(count), _check(check),
          _own(system.innovations.rowwise().squaredNorm()), _ring(system.coefficients.size())
    {
    }

    Eigen::MatrixXd variances(const ProgressSink& progress);

private:
    bool isPredicted(Eigen::Index row, Eigen::Index point) const
    {
        return _path.sources(row, point) == ValueSource::Predicted;
    }
    bool isPattern(Eigen::Index left, Eigen::Index right) const;
    Eigen::Index firstUncertain() const;
    Eigen::Index firstRegular() const;
    Eigen::MatrixXd innovationsAt(Eigen::Index point) const;
    Eigen::MatrixXd varianceFrom(Eigen::Index point, const ProgressSink& progress);
    void carry(const Eigen::MatrixXd& innovations, Eigen::Index from, Eigen::MatrixXd& variance,
               const ProgressSink& progress);
    void addInnovations(Eigen::MatrixXd& variance) const;

    const SeriesPath& _path;
    const SeriesSystem& _system;
    Eigen::Index _count;
    const StopCheck& _check;
    Eigen::VectorXd _own;               ///< variances of the innovations
    std::vector<Eigen::MatrixXd> _ring; ///< the errors of the latest points, by point modulo lags
};

/// Whether the same series are predicted at two points.
bool ErrorPropagation::isPattern(Eigen::Index left, Eigen::Index right) const
{
    for (Eigen::Index row = 0; row < _system.size(); ++row)
        if (isPredicted(row, left) != isPredicted(row, right))
            return false;
    return true;
}

/// The first point whose errors reach beyond the data: errors do not pass as many known points in a
/// row as the system has lags.
Eigen::Index ErrorPropagation::firstUncertain() const
{
    Eigen::Index known = 0;
    for (Eigen::Index point = _path.end; point > 0; --point) {
        const auto sources = _path.sources.col(point - 1).array();
        known = (sources == ValueSource::Predicted).any() ? 0 : known + 1;
        if (known == _system.lags())
            return point - 1 + known;
    }
    return 0;
}

/// The first point from which on the same series are predicted at all points.
Eigen::Index ErrorPropagation::firstRegular() const
{
    Eigen::Index point = _path.values.cols() - 1;
    while (point > 0 && isPattern(point - 1, point))
        --point;
    return point;
}

/// A factor of the covariance of the innovations at a point, 0 for series that are not predicted
/// there.
Eigen::MatrixXd ErrorPropagation::innovationsAt(Eigen::Index point) const
{
    std::vector<Eigen::Index> rows;
    for (Eigen::Index row = 0; row < _system.size(); ++row)
        if (isPredicted(row, point))
            rows.push_back(row);
    if (rows.empty())
        return Eigen::MatrixXd::Zero(_system.size(), 0);
    Eigen::MatrixXd factor = _system.innovations(rows, Eigen::all);
    // Few series need few columns.
    if (2 * factor.rows() <= factor.cols())
        factor = crossProductRoot(factor.transpose(), _check);
    Eigen::MatrixXd innovations = Eigen::MatrixXd::Zero(_system.size(), factor.cols());
    innovations(rows, Eigen::all) = factor;
    return innovations;
}

/// Adds the squared errors that innovations at point `from` make at later points.
void ErrorPropagation::carry(const Eigen::MatrixXd& innovations, Eigen::Index from,
                             Eigen::MatrixXd& variance, const ProgressSink& progress)
{
    const Eigen::Index lags = _system.lags();
    _ring[static_cast<std::size_t>(from % lags)] = innovations;
    Eigen::Index faded = 0;
    for (Eigen::Index point = from + 1; point < _path.values.cols() && faded < lags; ++point) {
        _check();
        progress(fractionOf(point - from, variance.cols()));
        Eigen::MatrixXd error = Eigen::MatrixXd::Zero(_system.size(), innovations.cols());
        for (Eigen::Index lag = 1; lag <= std::min(lags, point - from); ++lag)
            error.noalias() += _system.coefficients[static_cast<std::size_t>(lag - 1)] *
                               _ring[static_cast<std::size_t>((point - lag) % lags)];
        variance.col(point - from - 1) += error.topRows(_count).rowwise().squaredNorm();
        for (Eigen::Index row = 0; row < _system.size(); ++row)
            if (!isPredicted(row, point))
                error.row(row).setZero();
        const bool isFaded =
            (error.rowwise().squaredNorm().array() <= kNegligible * _own.array()).all();
        faded = isFaded ? faded + 1 : 0;
        _ring[static_cast<std::size_t>(point % lags)].swap(error);
    }
}

/// The variances that the innovations at a point make at later points.
Eigen::MatrixXd ErrorPropagation::varianceFrom(Eigen::Index point, const ProgressSink& progress)
{
    const Eigen::MatrixXd innovations = innovationsAt(point);
    Eigen::MatrixXd variance = Eigen::MatrixXd::Zero(_count, _path.values.cols() - point - 1);
    for (Eigen::Index column = 0; column < innovations.cols(); column += kFactorsAtOnce) {
        const Eigen::Index end = std::min(column + kFactorsAtOnce, innovations.cols());
        carry(innovations.middleCols(column, end - column), point, variance,
              partOf(progress, fractionOf(column, innovations.cols()),
                     fractionOf(end, innovations.cols())));
    }
    return variance;
}

/// Adds the variance of each series' own innovation, and clears what the scenario sets.
void ErrorPropagation::addInnovations(Eigen::MatrixXd& variance) const
{
    variance.colwise() += _own.head(_count);
    for (Eigen::Index point = _path.end; point < variance.cols(); ++point)
        for (Eigen::Index row = 0; row < _count; ++row)
            if (_path.sources(row, point) == ValueSource::Set)
                variance(row, point) = 0;
}

Eigen::MatrixXd ErrorPropagation::variances(const ProgressSink& progress)
{
    const Eigen::Index points = _path.values.cols();
    Eigen::MatrixXd variance = Eigen::MatrixXd::Zero(_count, points);
    if (_system.lags() > 0) {
        const Eigen::Index regular = std::max(firstRegular(), firstUncertain());
        const Eigen::Index first = firstUncertain();
        const Eigen::Index pieces = regular - first + 1;
        for (Eigen::Index point = first; point < regular; ++point)
            variance.rightCols(points - point - 1) +=
                varianceFrom(point, partOf(progress, fractionOf(point - first, pieces),
                                           fractionOf(point - first + 1, pieces)));
        // From here on the innovations of each point act as those of the first one do, later.
        if (regular < points) {
            Eigen::MatrixXd sums =
                varianceFrom(regular, partOf(progress, fractionOf(pieces - 1, pieces), 1));
            for (Eigen::Index i = 1; i < sums.cols(); ++i)
                sums.col(i) += sums.col(i - 1);
            variance.rightCols(points - regular - 1) += sums;
        }
    }
    addInnovations(variance);
    return variance;
}

} // namespace

Eigen::MatrixXd predictionErrorVariances(const SeriesPath& path, const SeriesSystem& system,
                                         Eigen::Index count, const StopCheck& check,
                                         const ProgressSink& progress)
{
    return ErrorPropagation(path, system, count, check).variances(progress);
}

} // namespace EmbeddedHV
