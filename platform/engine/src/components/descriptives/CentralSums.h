#pragma once

#include <cstddef>

namespace EmbeddedHV {

/// The sum of the weights of some values, their mean, and the sums of the powers of their
/// deviations from the mean, each times its weight: M_k, the sum of w (x - mean)^k.
///
/// The mean and the sum of weights have a rest each, what is too small for the last digit of the
/// number: the deviations of values far from 0 are then as exact as those of values near it.
struct CentralSums
{
    double weight = 0;
    double weightRest = 0;
    double mean = 0;
    double meanRest = 0;
    double second = 0;
    double third = 0;
    double fourth = 0;
};

/// The sums of `count` values. `weights` may be null, and each value then has the weight 1.
/// Two passes: the deviations from a mean that is rounded, and the correction for the deviation of
/// that mean from the true one. `near` is any number near the values; it is subtracted first.
///
/// T. F. Chan, G. H. Golub and R. J. LeVeque, "Algorithms for computing the sample variance:
/// analysis and recommendations", The American Statistician 37 (1983), 242-247: the corrected
/// two-pass algorithm, here for the third and the fourth power too. `deviations` is room for as
/// many numbers.
CentralSums centralSums(const double* values, const double* weights, std::size_t count, double near,
                        double* deviations);

/// Adds the sums of further values.
///
/// P. Pébay, "Formulas for robust, one-pass parallel computation of covariances and
/// arbitrary-order statistical moments", Sandia report SAND2008-6212 (2008), equations 2.1 and
/// 3.1, with sums of weights for counts.
void merge(CentralSums& sums, const CentralSums& more);

} // namespace EmbeddedHV
