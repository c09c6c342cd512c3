#pragma once

#include <optional>
#include <vector>

#include "components/temporal/model/TcmModel.h"
#include "components/temporal/training/ScaledSeries.h"

namespace EmbeddedHV {

/// The lagged values of one series in an equation that is to be fitted.
struct EquationGroup
{
    std::size_t series = 0;
    std::vector<int> lags;
    bool isForced = false;
};

/// An equation with what is known of its residuals.
struct FittedEquation
{
    SeriesEquation equation;
    bool isPerfect = false; ///< the residuals are rounding
    /// For each point of time the externally studentised residual; not-a-number where it is
    /// unknown.
    std::vector<double> studentised;
};

/// The points of time at which a series has a value and all lagged values of its equation are
/// there.
TimeRange observationsOf(const ScaledSeries& series, std::size_t target,
                         const std::vector<EquationGroup>& groups);

/// Fits the equation of a target by least squares, by a QR decomposition with column pivoting of
/// the scaled and centred columns, on all points of time that have its lagged values. Nothing if
/// the columns depend on each other or there are not more points than parameters.
///
/// Standard errors come from s^2 (X'X)^-1 with s^2 = RSS / (n - k); the F statistic of a group is
/// the Wald statistic of its coefficients divided by their number, which equals the F test of the
/// equation with and without the group. Greene, "Econometric analysis", chapters 4 and 5.
std::optional<FittedEquation> fitEquation(const SeriesTable& table, const ScaledSeries& series,
                                          std::size_t target,
                                          const std::vector<EquationGroup>& groups);

/// The equation of a series that does not vary: its value.
SeriesEquation constantEquation(const SeriesTable& table, const ScaledSeries& series,
                                std::size_t target);

} // namespace EmbeddedHV
