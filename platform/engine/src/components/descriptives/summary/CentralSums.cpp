#include "components/descriptives/summary/CentralSums.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace EmbeddedHV {
namespace {

/// Four independent sums, each of every fourth term. So an addition need not wait for the previous
/// one.
constexpr std::size_t kLanes = 4;
using Lanes = std::array<double, kLanes>;

double total(const Lanes& lanes)
{
    return (lanes[0] + lanes[1]) + (lanes[2] + lanes[3]);
}

/// Calls add(term, lane) for each term. The terms of a remainder go to the first lane.
template <typename Add>
void inLanes(std::size_t count, const Add& add)
{
    std::size_t i = 0;
    for (; i + kLanes <= count; i += kLanes)
        for (std::size_t lane = 0; lane < kLanes; ++lane)
            add(i + lane, lane);
    for (; i < count; ++i)
        add(i, 0);
}

/// Compensated addition: the rounding error of the addition goes to the rest.
void addTo(double& number, double& rest, double more)
{
    const double sum = number + more;
    const double larger = std::abs(number) >= std::abs(more) ? number : more;
    const double smaller = std::abs(number) >= std::abs(more) ? more : number;
    rest += smaller - (sum - larger);
    number = sum + rest;
    rest -= number - sum;
}

template <bool weighted>
double weightAt([[maybe_unused]] const double* weights, [[maybe_unused]] std::size_t i)
{
    if constexpr (weighted)
        return weights[i];
    else
        return 1;
}

/// Computes the deviations from `near`. Returns the sum of the weights and the weighted sum of the
/// deviations.
template <bool weighted>
std::array<double, 2> deviate(const double* values, const double* weights, std::size_t count,
                              double near, double* deviations)
{
    Lanes weight{};
    Lanes first{};
    const auto add = [&](std::size_t i, std::size_t lane) {
        const double w = weightAt<weighted>(weights, i);
        deviations[i] = values[i] - near;
        weight[lane] += w;
        first[lane] += w * deviations[i];
    };
    inLanes(count, add);
    return {total(weight), total(first)};
}

/// The weighted sums of the first four powers of (deviation - mean).
template <bool weighted>
std::array<double, 4> powers(const double* deviations, const double* weights, std::size_t count,
                             double mean)
{
    std::array<Lanes, 4> sums{};
    const auto add = [&](std::size_t i, std::size_t lane) {
        const double deviation = deviations[i] - mean;
        const double first = weightAt<weighted>(weights, i) * deviation;
        const double square = deviation * deviation;
        sums[0][lane] += first;
        sums[1][lane] += first * deviation;
        sums[2][lane] += first * square;
        sums[3][lane] += first * deviation * square;
    };
    inLanes(count, add);
    return {total(sums[0]), total(sums[1]), total(sums[2]), total(sums[3])};
}

template <bool weighted>
CentralSums sumsOf(const double* values, const double* weights, std::size_t count, double near,
                   double* deviations)
{
    const auto [weight, first] = deviate<weighted>(values, weights, count, near, deviations);
    const double mean = first / weight;
    const auto [s1, s2, s3, s4] = powers<weighted>(deviations, weights, count, mean);
    const double error = s1 / weight;
    CentralSums sums;
    sums.weight = weight;
    sums.second = std::max(s2 - error * s1, 0.0);
    sums.third = s3 - 3 * error * s2 + 2 * error * error * s1;
    sums.fourth = std::max(
        s4 - 4 * error * s3 + 6 * error * error * s2 - 3 * error * error * error * s1, 0.0);
    sums.mean = near;
    addTo(sums.mean, sums.meanRest, mean);
    addTo(sums.mean, sums.meanRest, error);
    return sums;
}

} // namespace

CentralSums centralSums(const double* values, const double* weights, std::size_t count, double near,
                        double* deviations)
{
    return weights ? sumsOf<true>(values, weights, count, near, deviations)
                   : sumsOf<false>(values, nullptr, count, near, deviations);
}

void merge(CentralSums& sums, const CentralSums& more)
{
    if (sums.weight == 0) {
        sums = more;
        return;
    }
    const CentralSums a = sums;
    const CentralSums& b = more;
    addTo(sums.weight, sums.weightRest, b.weight);
    // Use fractions: squares of large weights could exceed the range of a double.
    const double p = a.weight / sums.weight;
    const double q = b.weight / sums.weight;
    const double d = (b.mean - a.mean) + (b.meanRest - a.meanRest);
    const double both = a.weight * q;
    sums.second = a.second + b.second + d * d * both;
    sums.third =
        a.third + b.third + d * d * d * both * (p - q) + 3 * d * (p * b.second - q * a.second);
    sums.fourth = a.fourth + b.fourth + d * d * d * d * both * (p * p - p * q + q * q) +
                  6 * d * d * (p * p * b.second + q * q * a.second) +
                  4 * d * (p * b.third - q * a.third);
    addTo(sums.mean, sums.meanRest, d * q);
}

} // namespace EmbeddedHV
