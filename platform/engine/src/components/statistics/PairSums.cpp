#include "components/statistics/PairSums.h"

#include <algorithm>

#include <Eigen/Core>

namespace EmbeddedHV {
namespace {

/// The products of a part of the work; about a tenth of a second.
constexpr double kProductsAtOnce = 1 << 25;
constexpr Eigen::Index kMostRows = 512;

using Eigen::Index;
using Eigen::MatrixXd;
using Values = Eigen::Ref<const MatrixXd>;
using Weights = Eigen::Ref<const Eigen::VectorXd>;

/// The columns of one side in a block of records, with 0 for missing values.
struct BlockSide
{
    BlockSide(const std::vector<std::size_t>& columns, const Values& all, const Weights& weights)
        : values(all.rows(), static_cast<Index>(columns.size())),
          present(all.rows(), static_cast<Index>(columns.size()))
    {
        for (Index i = 0; i < values.cols(); ++i) {
            const auto column =
                all.col(static_cast<Index>(columns[static_cast<std::size_t>(i)])).array();
            present.col(i) = 1 - column.isNaN().cast<double>();
            values.col(i) = column.isNaN().select(0, column);
        }
        isComplete = present.minCoeff() == 1;
        weighted = values.array().colwise() * weights.array();
        weightedPresent = present.array().colwise() * weights.array();
        squares = values.cwiseProduct(weighted);
    }

    MatrixXd values;
    MatrixXd present; ///< 1 for a value, 0 for a missing value
    MatrixXd weighted;
    MatrixXd weightedPresent;
    MatrixXd squares; ///< weighted
    bool isComplete = false;
};

} // namespace

struct PairSums::Impl
{
    void add(const BlockSide& x, const BlockSide& y, const Weights& weights);
    void addComplete(const BlockSide& x, const BlockSide& y, const Weights& weights);

    std::vector<std::size_t> left;
    std::vector<std::size_t> right;
    bool weighted = false;
    MatrixXd records; ///< empty without weights: it would be equal to `weight`
    MatrixXd weight;
    MatrixXd sumX;
    MatrixXd sumY;
    MatrixXd squareX;
    MatrixXd squareY;
    MatrixXd product;
};

/// Without missing values, the sums of a column are the same for all its pairs.
void PairSums::Impl::addComplete(const BlockSide& x, const BlockSide& y, const Weights& weights)
{
    weight.array() += weights.sum();
    if (weighted)
        records.array() += static_cast<double>(weights.size());
    sumX.colwise() += x.weighted.colwise().sum().transpose();
    squareX.colwise() += x.squares.colwise().sum().transpose();
    sumY.rowwise() += y.weighted.colwise().sum();
    squareY.rowwise() += y.squares.colwise().sum();
}

void PairSums::Impl::add(const BlockSide& x, const BlockSide& y, const Weights& weights)
{
    product.noalias() += x.weighted.transpose() * y.values;
    if (x.isComplete && y.isComplete)
        return addComplete(x, y, weights);
    weight.noalias() += x.weightedPresent.transpose() * y.present;
    if (weighted)
        records.noalias() += x.present.transpose() * y.present;
    sumX.noalias() += x.weighted.transpose() * y.present;
    squareX.noalias() += x.squares.transpose() * y.present;
    sumY.noalias() += x.present.transpose() * y.weighted;
    squareY.noalias() += x.present.transpose() * y.squares;
}

PairSums::PairSums(std::vector<std::size_t> left, std::vector<std::size_t> right, bool weighted)
    : _impl(std::make_unique<Impl>())
{
    Impl& all = *_impl;
    const auto rows = static_cast<Index>(left.size());
    const auto columns = static_cast<Index>(right.size());
    all.left = std::move(left);
    all.right = std::move(right);
    all.weighted = weighted;
    for (MatrixXd* sums :
         {&all.weight, &all.sumX, &all.sumY, &all.squareX, &all.squareY, &all.product})
        sums->setZero(rows, columns);
    if (weighted)
        all.records.setZero(rows, columns);
}

PairSums::~PairSums() = default;

void PairSums::take(const Records& records, const std::function<void()>& check)
{
    const double pairs =
        static_cast<double>(_impl->left.size()) * static_cast<double>(_impl->right.size());
    if (pairs == 0)
        return;
    const auto all = static_cast<Index>(records.rows);
    const Eigen::Map<const MatrixXd> values(records.values, all,
                                            static_cast<Index>(records.columns));
    const Eigen::Map<const Eigen::VectorXd> weights(records.weights, all);
    const Index most = std::clamp<Index>(static_cast<Index>(kProductsAtOnce / pairs), 1, kMostRows);
    for (Index begin = 0; begin < all; begin += most) {
        check();
        const Index rows = std::min(most, all - begin);
        const Values block = values.middleRows(begin, rows);
        const Weights blockWeights = weights.segment(begin, rows);
        _impl->add(BlockSide(_impl->left, block, blockWeights),
                   BlockSide(_impl->right, block, blockWeights), blockWeights);
    }
}

PairMoments PairSums::moments(std::size_t left, std::size_t right) const
{
    const auto i = static_cast<Index>(left);
    const auto j = static_cast<Index>(right);
    const Impl& all = *_impl;
    return {all.weighted ? all.records(i, j) : all.weight(i, j),
            all.weight(i, j),
            all.sumX(i, j),
            all.sumY(i, j),
            all.squareX(i, j),
            all.squareY(i, j),
            all.product(i, j)};
}

} // namespace EmbeddedHV
