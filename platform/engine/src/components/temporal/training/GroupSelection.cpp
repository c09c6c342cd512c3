#include "components/temporal/training/GroupSelection.h"

#include <algorithm>
#include <cmath>

#include <Eigen/Dense>

namespace EmbeddedHV {
namespace {

/// A column with a smaller part outside the span of others, relative to its own length squared,
/// counts as dependent on them. Rounding in the sums leaves about 1e-13.
constexpr double kLeastIndependentPart = 1e-9;
/// A residual that is smaller, relative to the target, is rounding.
constexpr double kLeastResidualPart = 1e-12;
/// Parameters of an equation are at most this part of its observations.
constexpr int kObservationsPerParameter = 2;

/// Replaces the lower triangle of a matrix by its Cholesky factor, with columns of zeros for those
/// that depend on columns before them: their pivot is too small beside `diagonal`. For matrices of
/// a few rows, where a library's blocking costs more than it gives.
template <class Matrix, class Diagonal>
void factorize(Matrix& matrix, const Diagonal& diagonal)
{
    for (Eigen::Index column = 0; column < matrix.cols(); ++column) {
        for (Eigen::Index row = column; row < matrix.rows(); ++row) {
            double value = matrix(row, column);
            for (Eigen::Index k = 0; k < column; ++k)
                value -= matrix(row, k) * matrix(column, k);
            matrix(row, column) = value;
        }
        const double pivot = matrix(column, column);
        const bool isDependent = !(pivot > kLeastIndependentPart * diagonal[column]);
        const double factor = isDependent ? 0 : 1 / std::sqrt(pivot);
        for (Eigen::Index row = column; row < matrix.rows(); ++row)
            matrix(row, column) *= factor;
    }
}

} // namespace

GroupSelection::GroupSelection(LaggedProducts& products, int lags, int maxGroups)
    : _products(products), _lags(lags)
{
    const auto columns = static_cast<Eigen::Index>(products.memberCount()) * lags;
    _rows.resize(Eigen::Index{maxGroups} * lags, columns);
    _blocks.resize(lags, columns);
}

void GroupSelection::start(std::size_t target)
{
    _selection = {};
    _factors = 0;
    _chosen = 0;
    _isIn.assign(_products.memberCount(), false);
    _isCollinear.assign(_products.memberCount(), false);
    for (std::size_t member = 0; member < _products.memberCount(); ++member)
        _blocks.middleCols(static_cast<Eigen::Index>(member) * _lags, _lags) =
            _products.ownProducts(member, _lags);
    _products.targetProducts(target, _lags, _targets);
    _allSquares = _squares = _products.targetSquares(target);
    add(target, false);
}

std::vector<int> GroupSelection::independentLags(std::size_t member) const
{
    Eigen::MatrixXd block = blockOf(member);
    factorize(block, _products.ownProducts(member, _lags).diagonal());
    std::vector<int> lags;
    for (int lag = 1; lag <= _lags; ++lag)
        if (block(lag - 1, lag - 1) > 0)
            lags.push_back(lag);
    return lags;
}

void GroupSelection::add(std::size_t member, bool isForced)
{
    const std::vector<int> lags = independentLags(member);
    _isIn[member] = true;
    if (static_cast<int>(lags.size()) < _lags)
        _isCollinear[member] = true;
    if (lags.empty())
        return;
    _selection.groups.push_back({member, lags, isForced});
    const auto count = static_cast<Eigen::Index>(lags.size());
    const Eigen::Index first = static_cast<Eigen::Index>(member) * _lags;
    _products.crossProducts(member, _lags, _cross);
    if (_factors > 0)
        _cross.noalias() -=
            _rows.block(0, first, _factors, _lags).transpose() * _rows.topRows(_factors);
    Eigen::MatrixXd block(count, count);
    Eigen::VectorXd targets(count);
    auto added = _rows.middleRows(_factors, count);
    for (Eigen::Index i = 0; i < count; ++i) {
        const int lag = lags[static_cast<std::size_t>(i)] - 1;
        targets[i] = _targets[first + lag];
        added.row(i) = _cross.row(lag);
        for (Eigen::Index j = 0; j < count; ++j)
            block(j, i) = blockOf(member)(lags[static_cast<std::size_t>(j)] - 1, lag);
    }
    const Eigen::MatrixXd factor = block.llt().matrixL();
    factor.triangularView<Eigen::Lower>().solveInPlace(added);
    factor.triangularView<Eigen::Lower>().solveInPlace(targets);
    _targets.noalias() -= added.transpose() * targets;
    for (Eigen::Index column = 0; column < _blocks.cols(); column += _lags)
        _blocks.middleCols(column, _lags).noalias() -=
            added.middleCols(column, _lags)
                .transpose()
                .lazyProduct(added.middleCols(column, _lags));
    _squares = std::max(0.0, _squares - targets.squaredNorm());
    _factors += count;
}

GroupSelection::Fall GroupSelection::fallOf(std::size_t member) const
{
    // No allocation: this runs for each candidate of each step.
    constexpr int kMostOnStack = 16;
    using Block = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::ColMajor,
                                kMostOnStack, kMostOnStack>;
    const auto own = _products.ownProducts(member, _lags);
    const auto targets = _targets.segment(static_cast<Eigen::Index>(member) * _lags, _lags);
    const auto fall = [&](auto block) -> Fall {
        factorize(block, own.diagonal());
        Fall result;
        // The solution is kept in the last column, above the diagonal, which the factor leaves.
        const Eigen::Index last = block.cols() - 1;
        for (Eigen::Index row = 0; row < block.rows(); ++row) {
            double value = targets[row];
            for (Eigen::Index k = 0; k < row; ++k)
                value -= block(row, k) * block(k, last);
            const bool isIndependent = block(row, row) > 0;
            value = isIndependent ? value / block(row, row) : 0;
            result.value += value * value;
            result.parameters += isIndependent ? 1 : 0;
            if (row < last)
                block(row, last) = value;
        }
        return result;
    };
    return _lags <= kMostOnStack ? fall(Block(blockOf(member)))
                                 : fall(Eigen::MatrixXd(blockOf(member)));
}

bool GroupSelection::isPerfect() const
{
    return _squares <= kLeastResidualPart * _allSquares;
}

bool GroupSelection::hasRoom() const
{
    return kObservationsPerParameter * Eigen::Index{parameters() + _lags} <=
           _products.observations();
}

double GroupSelection::criterion(const SelectionRules& rules, double squares, int parameters,
                                 std::size_t chosen) const
{
    const auto rows = static_cast<double>(_products.observations());
    const double least = kLeastResidualPart * _allSquares;
    const double fit = rows * std::log(std::max(squares, least) / rows);
    if (rules.criterion == SelectionCriterion::Aic)
        return fit + 2 * parameters;
    const double bic = fit + std::log(rows) * parameters;
    if (rules.criterion == SelectionCriterion::Bic)
        return bic;
    // Twice the logarithm of the number of ways to choose as many of the candidates. Chen, Chen,
    // "Extended Bayesian information criteria for model selection with large model spaces", 2008,
    // with gamma = 1.
    const auto all = static_cast<double>(rules.candidates.size());
    const auto some = static_cast<double>(chosen);
    return bic + 2 * (std::lgamma(all + 1) - std::lgamma(some + 1) - std::lgamma(all - some + 1));
}

bool GroupSelection::addBest(const SelectionRules& rules)
{
    if (isPerfect() || !hasRoom())
        return false;
    Fall most;
    std::size_t best = _products.memberCount();
    for (const std::size_t candidate : rules.candidates) {
        if (_isIn[candidate])
            continue;
        const Fall fall = fallOf(candidate);
        if (fall.parameters == 0)
            _isCollinear[candidate] = true;
        else if (fall.value > most.value) {
            most = fall;
            best = candidate;
        }
    }
    if (best == _products.memberCount() ||
        criterion(rules, _squares - most.value, parameters() + most.parameters, _chosen + 1) >=
            criterion(rules, _squares, parameters(), _chosen))
        return false;
    add(best, false);
    ++_chosen;
    return true;
}

Selection GroupSelection::select(std::size_t target, const SelectionRules& rules)
{
    start(target);
    for (const std::size_t member : rules.forced) {
        if (hasRoom())
            add(member, true);
        else
            _selection.omitted.push_back(member);
    }
    const auto most = static_cast<std::size_t>(rules.maxPredictors);
    while (_chosen + rules.forced.size() < most) {
        _products.checkStop();
        if (!addBest(rules))
            break;
    }
    for (std::size_t member = 0; member < _isCollinear.size(); ++member)
        if (_isCollinear[member])
            _selection.collinear.push_back(member);
    _selection.criterion = criterion(rules, _squares, parameters(), _chosen);
    return std::move(_selection);
}

} // namespace EmbeddedHV
