#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "components/temporal/explanation/CausalNetwork.h"

namespace EmbeddedHV {

/// A value of a series at a point of time.
struct SeriesPoint
{
    std::size_t series = 0;
    std::int64_t timeIndex = 0;
};

/// A shock, which is the residual of a series at an earlier point of time, and what it did to the
/// value that is explained.
struct OriginShock
{
    SeriesPoint at;
    double residual = 0;
    double contribution = 0; ///< over all paths
    /// The path with the coefficient largest in size, from the shock to the value that is
    /// explained, both ends included.
    std::vector<SeriesPoint> path;
    double pathContribution = 0;
};

/// Where the departure of a value comes from. With the forecast of y[j,t] by the whole system from
/// the data up to the point `firstIndex` - 1:
///
///     y[j,t] - forecast = departure = residual + the sum of the contributions of shocks + others.
///
/// A shock of series i at the point s contributes its residual e[i,s] times the sum over all paths
/// of lagged terms from (i,s) to (j,t) of the product of their coefficients. The residual of (j,t)
/// itself is what no earlier shock explains.
struct OutlierOrigin
{
    std::int64_t firstIndex = 0;
    double residual = 0;
    double departure = 0;            ///< not-a-number if a residual on some path is unknown
    std::vector<OriginShock> shocks; ///< the largest contributions first
    double others = 0;               ///< contributions of all other shocks
};

/// By what a series moves in the system of all: a target by its equation, another series by its own
/// past. Null for a series that has neither.
const SeriesEquation* systemEquation(const TcmModel& model, std::size_t series);

/// The residual of an equation at a point of time; not-a-number where it is unknown.
using ResidualSource = std::function<double(const SeriesEquation&, std::int64_t index)>;

/// The most points of time that the search goes back at any level.
inline constexpr std::int64_t kMostPointsBack = 240;

/// Goes back `level` (at least 1) times the lags of the model, but not before index 0 nor farther
/// than kMostPointsBack. Targets move by their equations, other series by their autoregressions;
/// the shocks of a series that has neither are unknown. Gives at most `most` shocks. Takes time
/// linear in terms and points. Throws what `check` throws.
OutlierOrigin originOf(const TcmModel& model, const ResidualSource& residuals, SeriesPoint outlier,
                       std::int64_t level, std::size_t most, const StopCheck& check);

} // namespace EmbeddedHV
