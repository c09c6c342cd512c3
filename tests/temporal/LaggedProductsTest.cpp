#include <cstddef>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include <Eigen/Core>

#include "components/temporal/training/LaggedProducts.h"

namespace EmbeddedHV {
namespace {

constexpr int kLags = 3;
constexpr TimeRange kWindow{4, 34};
constexpr Eigen::Index kRows = 30 - kLags;

/// Series that drift, so that the means of their lags differ.
ScaledSeries driftingSeries()
{
    ScaledSeries series;
    series.values.resize(40, 5);
    std::mt19937 random(7);
    std::uniform_real_distribution<double> noise(-1, 1);
    for (Eigen::Index column = 0; column < series.values.cols(); ++column)
        for (Eigen::Index row = 0; row < series.values.rows(); ++row)
            series.values(row, column) =
                noise(random) + 0.3 * static_cast<double>((column + 1) * row);
    return series;
}

/// The centred values of a series at a lag, straight from the definition.
Eigen::VectorXd centred(const ScaledSeries& series, std::size_t place, int lag)
{
    const Eigen::VectorXd values = series.values.col(static_cast<Eigen::Index>(place))
                                       .segment(kWindow.first + kLags - lag, kRows);
    return values.array() - values.mean();
}

TEST(LaggedProducts, AreTheSumsOfProductsOfCentredColumns)
{
    const ScaledSeries series = driftingSeries();
    const std::vector<std::size_t> members{3, 0, 4};
    LaggedProducts products(series, members, kWindow, kLags, [] {});
    ASSERT_EQ(products.observations(), kRows);
    for (const int lags : {1, kLags})
        for (std::size_t one = 0; one < members.size(); ++one) {
            Eigen::MatrixXd block;
            Eigen::VectorXd target;
            products.crossProducts(one, lags, block);
            products.targetProducts(one, lags, target);
            const Eigen::VectorXd now = centred(series, members[one], 0);
            EXPECT_NEAR(products.targetSquares(one), now.squaredNorm(), 1e-9);
            for (std::size_t other = 0; other < members.size(); ++other)
                for (int lag = 1; lag <= lags; ++lag) {
                    const Eigen::VectorXd past = centred(series, members[other], lag);
                    const Eigen::Index place = static_cast<Eigen::Index>(other) * lags + lag - 1;
                    EXPECT_NEAR(target[place], past.dot(now), 1e-9) << one << other << lag;
                    for (int row = 1; row <= lags; ++row)
                        EXPECT_NEAR(block(row - 1, place),
                                    centred(series, members[one], row).dot(past), 1e-9)
                            << one << other << lag << row;
                }
            for (int lag = 1; lag <= lags; ++lag)
                for (int row = 1; row <= lags; ++row)
                    EXPECT_NEAR(
                        products.ownProducts(one, lags)(row - 1, lag - 1),
                        centred(series, members[one], row).dot(centred(series, members[one], lag)),
                        1e-9);
        }
}

} // namespace
} // namespace EmbeddedHV
