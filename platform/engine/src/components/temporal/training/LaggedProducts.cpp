#include "components/temporal/training/LaggedProducts.h"

#include <algorithm>

#include <Eigen/Dense>

namespace EmbeddedHV {
namespace {

/// Members whose products are computed in one matrix product: a few milliseconds of work.
constexpr std::size_t kPanel = 64;
constexpr std::size_t kMostKeptBytes = std::size_t{3} << 30;

} // namespace

LaggedProducts::LaggedProducts(const ScaledSeries& series, std::vector<std::size_t> members,
                               TimeRange window, int lags, StopCheck checkStop)
    : _members(std::move(members)), _lags(lags), _rows(window.size() - lags),
      _checkStop(std::move(checkStop))
{
    const auto count = static_cast<Eigen::Index>(_members.size());
    _values.resize(window.size(), count);
    for (Eigen::Index i = 0; i < count; ++i)
        _values.col(i) =
            series.values.col(static_cast<Eigen::Index>(_members[static_cast<std::size_t>(i)]))
                .segment(window.first, window.size());
    const std::size_t bytes = sizeof(double) * static_cast<std::size_t>(2 * lags + 1) *
                              std::max<std::size_t>(1, memberCount());
    _mostKept = std::max(2 * kPanel, kMostKeptBytes / bytes);
    computeMeans();
    _own.resize(lags, count * lags);
    _squares.resize(count);
    for (std::size_t member = 0; member < memberCount(); ++member)
        computeOwn(member);
}

void LaggedProducts::computeMeans()
{
    const Eigen::Index window = _values.rows();
    _means.resize(_lags + 1, _values.cols());
    _heads.resize(_lags, _values.cols());
    _tails.resize(_lags, _values.cols());
    for (int lag = 0; lag <= _lags; ++lag)
        _means.row(lag) = lagged(lag).colwise().mean();
    for (int lag = 1; lag <= _lags; ++lag) {
        _heads.row(lag - 1) = _values.row(_lags - lag);
        _tails.row(lag - 1) = _values.row(window - lag);
    }
}

void LaggedProducts::computeOwn(std::size_t member)
{
    if (member % kPanel == 0)
        _checkStop();
    const auto column = static_cast<Eigen::Index>(member);
    const auto means = _means.col(column);
    Eigen::MatrixXd centred(_rows, _lags + 1);
    for (int lag = 0; lag <= _lags; ++lag)
        centred.col(lag) = lagged(lag).col(column).array() - means[lag];
    _squares[column] = centred.col(0).squaredNorm();
    _own.middleCols(column * _lags, _lags).noalias() =
        centred.rightCols(_lags).transpose() * centred.rightCols(_lags);
}

void LaggedProducts::makeRoom(std::size_t count)
{
    while (!_kept.empty() && _kept.size() + count > _mostKept) {
        _differences.erase(_kept.front());
        _kept.pop_front();
    }
}

void LaggedProducts::prepare(std::size_t firstMember, std::size_t count)
{
    const std::size_t end = std::min(firstMember + count, memberCount());
    for (std::size_t first = firstMember; first < end; first += kPanel) {
        const std::size_t size = std::min(kPanel, end - first);
        makeRoom(size);
        for (std::size_t i = 0; i < size; ++i)
            if (_differences.emplace(first + i, DifferenceProducts(2 * _lags + 1, _values.cols()))
                    .second)
                _kept.push_back(first + i);
        const auto at = static_cast<Eigen::Index>(first);
        const auto columns = static_cast<Eigen::Index>(size);
        Eigen::MatrixXd products(_values.cols(), columns);
        for (int difference = -_lags; difference <= _lags; ++difference) {
            _checkStop();
            products.noalias() = lagged(std::max(0, -difference)).transpose() *
                                 lagged(std::max(0, difference)).middleCols(at, columns);
            for (std::size_t i = 0; i < size; ++i)
                _differences[first + i].row(_lags + difference) =
                    products.col(static_cast<Eigen::Index>(i)).transpose();
        }
    }
}

const LaggedProducts::DifferenceProducts& LaggedProducts::differences(std::size_t member)
{
    const auto found = _differences.find(member);
    if (found != _differences.end())
        return found->second;
    prepare(member, 1);
    return _differences.at(member);
}

void LaggedProducts::crossProducts(std::size_t member, int lags, Eigen::MatrixXd& block)
{
    const DifferenceProducts& products = differences(member);
    const auto other = static_cast<Eigen::Index>(member);
    block.resize(lags, _values.cols() * lags);
    for (Eigen::Index i = 0; i < _values.cols(); ++i) {
        auto pair = block.middleCols(i * lags, lags);
        for (int lag = 1; lag <= lags; ++lag)
            for (int row = 1; row <= lags; ++row) {
                // One step along the diagonal moves both columns by one point of time.
                const double before = lag == 1   ? products(_lags + row - 1, i)
                                      : row == 1 ? products(_lags - lag + 1, i)
                                                 : pair(row - 2, lag - 2);
                pair(row - 1, lag - 1) = before + _heads(lag - 1, i) * _heads(row - 1, other) -
                                         _tails(lag - 1, i) * _tails(row - 1, other);
            }
    }
    for (Eigen::Index i = 0; i < _values.cols(); ++i)
        block.middleCols(i * lags, lags).noalias() -=
            (static_cast<double>(_rows) * _means.col(other).segment(1, lags)) *
            _means.col(i).segment(1, lags).transpose();
}

void LaggedProducts::targetProducts(std::size_t member, int lags, Eigen::VectorXd& products)
{
    const DifferenceProducts& all = differences(member);
    const double mean = _means(0, static_cast<Eigen::Index>(member));
    products.resize(_values.cols() * lags);
    for (Eigen::Index i = 0; i < _values.cols(); ++i)
        for (int lag = 1; lag <= lags; ++lag)
            products[i * lags + lag - 1] =
                all(_lags - lag, i) - static_cast<double>(_rows) * _means(lag, i) * mean;
}

} // namespace EmbeddedHV
