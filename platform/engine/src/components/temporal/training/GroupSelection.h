#pragma once

#include <cstddef>
#include <vector>

#include <Eigen/Core>

#include "components/temporal/training/LaggedProducts.h"
#include "components/temporal/training/TrainingOptions.h"

namespace EmbeddedHV {

/// Lagged values of one series in an equation.
struct SelectedGroup
{
    std::size_t member = 0;
    std::vector<int> lags; ///< without those that depend on others of the equation
    bool isForced = false;
};

/// The predictors of one equation.
struct Selection
{
    std::vector<SelectedGroup> groups;  ///< the target itself first, then in order of selection
    std::vector<std::size_t> collinear; ///< members whose lags depend on the equation
    std::vector<std::size_t> omitted;   ///< forced members for which there are too few points
    double criterion = 0;               ///< without terms that all equations of a target share
};

/// What may come into the equation of a target.
struct SelectionRules
{
    std::vector<std::size_t> forced;     ///< members
    std::vector<std::size_t> candidates; ///< members, without the target and those forced
    int maxPredictors = 5;
    SelectionCriterion criterion = SelectionCriterion::Bic;
};

/// Grouped orthogonal matching pursuit. The own past of the target is always in; then the group
/// that lets the residual sum of squares fall most comes in, while the criterion falls.
/// Lozano, Swirszcz, Abe, "Grouped orthogonal matching pursuit for variable selection and
/// prediction", 2009.
///
/// For each candidate the block of its Gram matrix and its products with the target are kept with
/// all groups of the equation projected out, by rows of a Cholesky factor. A step costs a candidate
/// its products with the group that came in, and no pass over the data.
class GroupSelection
{
public:
    /// `products` is borrowed. Groups have lags 1 to `lags`, at most those of the products.
    GroupSelection(LaggedProducts& products, int lags, int maxGroups);

    Selection select(std::size_t target, const SelectionRules& rules);

private:
    /// What a group would take of the residual sum of squares, and its independent lags.
    struct Fall
    {
        double value = 0;
        int parameters = 0;
    };

    void start(std::size_t target);
    void add(std::size_t member, bool isForced);
    std::vector<int> independentLags(std::size_t member) const;
    Fall fallOf(std::size_t member) const;
    double criterion(const SelectionRules& rules, double squares, int parameters,
                     std::size_t chosen) const;
    bool addBest(const SelectionRules& rules);
    auto blockOf(std::size_t member) const
    {
        return _blocks.middleCols(static_cast<Eigen::Index>(member) * _lags, _lags);
    }
    bool isPerfect() const;
    /// Whether the observations suffice for another group.
    bool hasRoom() const;
    int parameters() const { return 1 + static_cast<int>(_factors); }

    LaggedProducts& _products;
    int _lags;
    Selection _selection;
    double _allSquares = 0; ///< of the target
    double _squares = 0;    ///< residual
    Eigen::Index _factors = 0;
    std::size_t _chosen = 0; ///< groups that neither rule nor target brought in
    std::vector<bool> _isIn;
    std::vector<bool> _isCollinear;
    Eigen::MatrixXd _rows;   ///< of the Cholesky factor, a column a lag of a member
    Eigen::MatrixXd _blocks; ///< of each member with itself, the equation projected out
    Eigen::VectorXd _targets;
    Eigen::MatrixXd _cross;
};

} // namespace EmbeddedHV
