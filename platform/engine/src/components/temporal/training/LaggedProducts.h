#pragma once

#include <cstddef>
#include <deque>
#include <unordered_map>
#include <vector>

#include <Eigen/Core>

#include "components/temporal/base/StopCheck.h"
#include "components/temporal/training/ScaledSeries.h"

namespace EmbeddedHV {

/// The Gram matrix of the lagged values of many series over one window of time: the sums of
/// products of centred columns, where column (i, l) is series i at lag l, for l from 0 to the
/// largest lag.
///
/// Two columns whose lags differ by d have products that do not depend on more than d but at the
/// ends of the window. So 2L+1 numbers for a pair of series, not (L+1) squared, are computed and
/// kept, and a block of the matrix is made from them on request. The memory for them is bounded;
/// the columns that were dropped are computed again when they are needed.
class LaggedProducts
{
public:
    /// `members` are places in `series`, which is borrowed, each with values in the whole window.
    /// `checkStop` is called every few milliseconds and may throw.
    LaggedProducts(const ScaledSeries& series, std::vector<std::size_t> members, TimeRange window,
                   int lags, StopCheck checkStop);

    std::size_t memberCount() const { return _members.size(); }
    const std::vector<std::size_t>& members() const { return _members; }
    int lags() const { return _lags; }
    Eigen::Index observations() const { return _rows; }
    void checkStop() const { _checkStop(); }

    /// Computes what blocks of these members need, faster than one by one.
    void prepare(std::size_t firstMember, std::size_t count);
    /// The rows are lags 1 to `lags` of a member, the columns lags 1 to `lags` of each member.
    void crossProducts(std::size_t member, int lags, Eigen::MatrixXd& block);
    /// The products of a member at lag 0 with lags 1 to `lags` of each member.
    void targetProducts(std::size_t member, int lags, Eigen::VectorXd& products);
    /// The block of one member with itself, lags 1 to `lags`.
    auto ownProducts(std::size_t member, int lags) const
    {
        return _own.block(0, static_cast<Eigen::Index>(member) * _lags, lags, lags);
    }
    /// The sum of squares of a member at lag 0.
    double targetSquares(std::size_t member) const
    {
        return _squares[static_cast<Eigen::Index>(member)];
    }

private:
    /// A column a member i: the sums of i at t and the other at t-d in row L+d, of i at t-d and the
    /// other at t in row L-d.
    using DifferenceProducts = Eigen::MatrixXd;

    const DifferenceProducts& differences(std::size_t member);
    void makeRoom(std::size_t count);
    void computeMeans();
    void computeOwn(std::size_t member);
    /// The values of all members in the rows of the window at a lag.
    auto lagged(int lag) const { return _values.middleRows(_lags - lag, _rows); }

    std::vector<std::size_t> _members;
    int _lags;
    Eigen::Index _rows; ///< points of time that have all lags
    StopCheck _checkStop;
    Eigen::MatrixXd _values; ///< of the window, a column a member
    Eigen::MatrixXd _means;  ///< row l: of the columns (i, l)
    Eigen::MatrixXd _heads;  ///< row l-1: the value that lag l has more at the begin than lag l-1
    Eigen::MatrixXd _tails;  ///< row l-1: the value that lag l-1 has more at the end than lag l
    Eigen::MatrixXd _own;
    Eigen::VectorXd _squares;
    std::unordered_map<std::size_t, DifferenceProducts> _differences;
    std::deque<std::size_t> _kept; ///< members with differences, the oldest first
    std::size_t _mostKept = 0;
};

} // namespace EmbeddedHV
