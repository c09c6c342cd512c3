#pragma once

#include <cstddef>

namespace EmbeddedHV {

/// The sum of the weights of some values, their mean, and the weighted sums of powers of their
/// deviations from the mean: M_k, the sum of w (x - mean)^k.
///
/// The mean and the sum of weights each have a rest, for the part that does not fit into their
/// digits. So values far from 0 have deviations as exact as values near 0.
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

/// Computes the sums of `count` values. `weights` may be null; then each value has the weight 1.
/// `near` is any number near the values; it is subtracted first. `deviations` is scratch memory for
/// `count` numbers.
///
/// Takes two passes: the deviations from a rounded mean, then the correction for the error of that
/// mean. T. F. Chan, G. H. Golub and R. J. LeVeque, "Algorithms for computing the sample variance:
/// analysis and recommendations", The American Statistician 37 (1983), 242-247: the corrected
/// two-pass algorithm, extended to the third and the fourth power.
CentralSums centralSums(const double* values, const double* weights, std::size_t count, double near,
                        double* deviations);

/// Adds the sums of further values to `sums`.
///
/// P. Pébay, "Formulas for robust, one-pass parallel computation of covariances and arbitrary-order
/// statistical moments", Sandia report SAND2008-6212 (2008), equations 2.1 and 3.1, with sums of
/// weights instead of counts.
void merge(CentralSums& sums, const CentralSums& more);

} // namespace EmbeddedHV
