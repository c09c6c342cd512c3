#pragma once

namespace EmbeddedHV {

/// The distributions of test statistics, from Boost.Math. Only one source file includes it:
/// it makes tables of constants when the library is loaded.

/// The probability that Student's t with `freedom` degrees of freedom (above 0) is at least as far
/// from 0 as `t`. 0 for a `t` that is not finite.
double twoSidedT(double t, double freedom);
/// The bound that |t| stays below with this probability, which lies between 0 and 1.
double twoSidedTBound(double probability, double freedom);
/// The probability that F with these degrees of freedom (above 0) is at least `f`. 0 for an `f`
/// that is not finite.
double upperF(double f, double numerator, double denominator);
/// The same for chi squared.
double upperChiSquared(double value, double freedom);
/// The bound that the absolute value of a standard normal variable stays below with this
/// probability, which lies between 0 and 1.
double twoSidedNormalBound(double probability);

} // namespace EmbeddedHV
