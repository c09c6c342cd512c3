#include "components/temporal/training/EquationFit.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <Eigen/Dense>

#include "components/statistics/Distributions.h"
#include "components/temporal/training/FitMeasures.h"

namespace EmbeddedHV {
namespace {

constexpr double kNoResidual = std::numeric_limits<double>::quiet_NaN();
/// Columns whose part outside the span of others is smaller count as dependent.
constexpr double kRankThreshold = 1e-8;
/// Residuals up to so many units of rounding of the target's values are rounding.
constexpr double kRoundingUnits = 64;

/// The regression of a target on lagged values, all scaled, with what is needed to scale back.
class Regression
{
public:
    Regression(const SeriesTable& table, const ScaledSeries& series, std::size_t target,
               const std::vector<EquationGroup>& groups)
        : _table(table), _series(series), _target(target), _groups(groups),
          _range(observationsOf(series, target, groups))
    {
        for (std::size_t group = 0; group < groups.size(); ++group)
            for (const int lag : groups[group].lags)
                _terms.push_back({group, lag});
    }

    bool solve();
    FittedEquation result() const;

private:
    struct Term
    {
        std::size_t group;
        int lag;
    };

    const ScaledColumn& columnOf(std::size_t place) const { return _series.columns[place]; }
    std::size_t seriesOf(const Term& term) const { return _groups[term.group].series; }
    Eigen::Index parameters() const { return static_cast<Eigen::Index>(_terms.size()) + 1; }
    double degrees() const { return static_cast<double>(_range.size() - parameters()); }
    auto lagged(std::size_t place, int lag) const
    {
        return _series.values.col(static_cast<Eigen::Index>(place))
            .segment(_range.first - lag, _range.size());
    }
    void fillDesign(Eigen::MatrixXd& design);
    bool isPerfect() const;
    void addTerms(SeriesEquation& equation) const;
    void addIntercept(SeriesEquation& equation) const;
    void addGroups(SeriesEquation& equation) const;
    int ownLags() const;
    std::vector<double> studentised(double variance) const;
    std::vector<double> spread(const Eigen::VectorXd& values) const;

    const SeriesTable& _table;
    const ScaledSeries& _series;
    std::size_t _target;
    const std::vector<EquationGroup>& _groups;
    TimeRange _range;
    std::vector<Term> _terms;
    Eigen::VectorXd _means;        ///< of the scaled columns
    double _targetMean = 0;        ///< of the scaled target
    Eigen::VectorXd _coefficients; ///< of the scaled columns
    Eigen::MatrixXd _covariance;   ///< of the coefficients, but for the variance
    Eigen::VectorXd _residuals;    ///< scaled
    Eigen::VectorXd _leverages;
    double _variance = 0; ///< of the scaled residuals
};

void Regression::fillDesign(Eigen::MatrixXd& design)
{
    design.resize(_range.size(), static_cast<Eigen::Index>(_terms.size()));
    _means.resize(design.cols());
    for (Eigen::Index column = 0; column < design.cols(); ++column) {
        const Term& term = _terms[static_cast<std::size_t>(column)];
        const auto values = lagged(seriesOf(term), term.lag);
        _means[column] = values.mean();
        design.col(column) = values.array() - _means[column];
    }
}

bool Regression::solve()
{
    if (_range.size() <= parameters())
        return false;
    Eigen::MatrixXd design;
    fillDesign(design);
    const auto values = lagged(_target, 0);
    _targetMean = values.mean();
    _residuals = values.array() - _targetMean;
    _leverages = Eigen::VectorXd::Constant(_range.size(), 1.0 / static_cast<double>(_range.size()));
    if (!_terms.empty()) {
        Eigen::ColPivHouseholderQR<Eigen::MatrixXd> decomposition(design);
        decomposition.setThreshold(kRankThreshold);
        if (decomposition.rank() < design.cols())
            return false;
        _coefficients = decomposition.solve(_residuals);
        _residuals -= design * _coefficients;
        const Eigen::MatrixXd triangle =
            decomposition.matrixR().topRows(design.cols()).triangularView<Eigen::Upper>();
        const Eigen::MatrixXd inverse =
            decomposition.colsPermutation() *
            triangle.triangularView<Eigen::Upper>()
                .solve(Eigen::MatrixXd::Identity(design.cols(), design.cols()))
                .eval();
        _covariance = inverse * inverse.transpose();
        _leverages += (design * inverse).rowwise().squaredNorm();
    }
    _variance = _residuals.squaredNorm() / degrees();
    return true;
}

bool Regression::isPerfect() const
{
    const ScaledColumn& target = columnOf(_target);
    const double noise =
        kRoundingUnits * std::numeric_limits<double>::epsilon() * target.largest / target.scale;
    return _residuals.squaredNorm() <= noise * noise * static_cast<double>(_range.size());
}

int Regression::ownLags() const
{
    return static_cast<int>(std::count_if(
        _terms.begin(), _terms.end(), [&](const Term& term) { return seriesOf(term) == _target; }));
}

void Regression::addTerms(SeriesEquation& equation) const
{
    for (std::size_t i = 0; i < _terms.size(); ++i) {
        const auto at = static_cast<Eigen::Index>(i);
        const double factor = columnOf(_target).scale / columnOf(seriesOf(_terms[i])).scale;
        const double error = std::sqrt(_variance * _covariance(at, at));
        LaggedTerm term;
        term.series = seriesOf(_terms[i]);
        term.lag = _terms[i].lag;
        term.coefficient = _coefficients[at] * factor;
        term.standardError = error * factor;
        term.tStatistic = _coefficients[at] / error;
        if (error == 0)
            term.tStatistic =
                std::copysign(std::numeric_limits<double>::infinity(), _coefficients[at]);
        term.pValue = twoSidedT(term.tStatistic, degrees());
        equation.terms.push_back(term);
    }
}

void Regression::addIntercept(SeriesEquation& equation) const
{
    const ScaledColumn& target = columnOf(_target);
    // Means of the columns as they are in the data, in units of the target's scale.
    Eigen::VectorXd means(static_cast<Eigen::Index>(_terms.size()));
    double explained = 0;
    double variance = 1.0 / static_cast<double>(_range.size());
    for (Eigen::Index i = 0; i < means.size(); ++i) {
        const ScaledColumn& column = columnOf(seriesOf(_terms[static_cast<std::size_t>(i)]));
        means[i] = _means[i] + column.center / column.scale;
        explained += _coefficients[i] * means[i];
    }
    if (means.size() > 0)
        variance += means.dot(_covariance * means);
    equation.intercept = target.center + target.scale * (_targetMean - explained);
    equation.interceptStandardError = target.scale * std::sqrt(_variance * variance);
}

void Regression::addGroups(SeriesEquation& equation) const
{
    Eigen::Index first = 0;
    for (const EquationGroup& group : _groups) {
        const auto count = static_cast<Eigen::Index>(group.lags.size());
        const Eigen::VectorXd coefficients = _coefficients.segment(first, count);
        const Eigen::MatrixXd covariance = _covariance.block(first, first, count, count);
        PredictorGroup result;
        result.series = group.series;
        result.isForced = group.isForced;
        const auto size = static_cast<double>(count);
        result.fStatistic =
            coefficients.dot(covariance.ldlt().solve(coefficients)) / size / _variance;
        if (_variance == 0)
            result.fStatistic = std::numeric_limits<double>::infinity();
        result.pValue = upperF(result.fStatistic, size, degrees());
        equation.groups.push_back(result);
        first += count;
    }
}

std::vector<double> Regression::spread(const Eigen::VectorXd& values) const
{
    std::vector<double> all(static_cast<std::size_t>(_table.values.rows()), kNoResidual);
    std::copy(values.begin(), values.end(), all.begin() + _range.first);
    return all;
}

/// t_i = e_i / (s_(i) sqrt(1 - h_i)), where s_(i) is the residual standard deviation without point
/// i, which s_(i)^2 = (RSS - e_i^2 / (1 - h_i)) / (n - k - 1) gives; h_i is the leverage. It has a
/// t distribution with n - k - 1 degrees of freedom. Cook, Weisberg, "Residuals and influence in
/// regression", section 2.2.
std::vector<double> Regression::studentised(double squares) const
{
    const double left = degrees() - 1;
    if (left < 1)
        return {};
    Eigen::VectorXd values(_residuals.size());
    for (Eigen::Index i = 0; i < values.size(); ++i) {
        const double free = 1 - _leverages[i];
        const double without = (squares - _residuals[i] * _residuals[i] / free) / left;
        // The fit passes through this point for any value, so its residual is always 0.
        values[i] =
            free > kRankThreshold && without > 0 ? _residuals[i] / std::sqrt(without * free) : 0;
    }
    return spread(values);
}

FittedEquation Regression::result() const
{
    FittedEquation fitted;
    SeriesEquation& equation = fitted.equation;
    const double scale = columnOf(_target).scale;
    equation.series = _target;
    addTerms(equation);
    addIntercept(equation);
    addGroups(equation);
    equation.residualVariance = _variance * scale * scale;
    fitted.isPerfect = isPerfect();
    const Eigen::VectorXd residuals = _residuals * scale;
    equation.fit = fitStatistics(
        _table.values.col(static_cast<Eigen::Index>(_target)).segment(_range.first, _range.size()),
        residuals, static_cast<int>(parameters()), ownLags(), fitted.isPerfect);
    equation.residuals = spread(residuals);
    if (!fitted.isPerfect)
        fitted.studentised = studentised(_residuals.squaredNorm());
    return fitted;
}

} // namespace

TimeRange observationsOf(const ScaledSeries& series, std::size_t target,
                         const std::vector<EquationGroup>& groups)
{
    TimeRange range = series.columns[target].range;
    for (const EquationGroup& group : groups)
        for (const int lag : group.lags) {
            const TimeRange& values = series.columns[group.series].range;
            range.first = std::max(range.first, values.first + lag);
            range.end = std::min(range.end, values.end + lag);
        }
    range.end = std::max(range.end, range.first);
    return range;
}

std::optional<FittedEquation> fitEquation(const SeriesTable& table, const ScaledSeries& series,
                                          std::size_t target,
                                          const std::vector<EquationGroup>& groups)
{
    Regression regression(table, series, target, groups);
    if (!regression.solve())
        return std::nullopt;
    return regression.result();
}

SeriesEquation constantEquation(const SeriesTable& table, const ScaledSeries& series,
                                std::size_t target)
{
    const TimeRange range = series.columns[target].range;
    const auto values =
        table.values.col(static_cast<Eigen::Index>(target)).segment(range.first, range.size());
    SeriesEquation equation;
    equation.series = target;
    equation.intercept = values[0];
    const Eigen::VectorXd residuals = values.array() - values[0];
    equation.fit = fitStatistics(values, residuals, 1, 0, true);
    equation.residuals.assign(static_cast<std::size_t>(table.values.rows()), kNoResidual);
    std::copy(residuals.begin(), residuals.end(), equation.residuals.begin() + range.first);
    return equation;
}

} // namespace EmbeddedHV
