#pragma once

#include <functional>
#include <string>
#include <vector>

#include "components/temporal/preparation/SeriesPlan.h"
#include "components/temporal/preparation/TimeAxis.h"
#include "components/temporal/preparation/TsdpSettings.h"

namespace EmbeddedHV {

/// The member of a preparation's container.
inline constexpr const char* kTsdpMember = "TSDPOutput.json";

/// A series that the preparation gives.
struct SeriesOutcome
{
    std::string id;
    std::vector<std::string> name; ///< the values of the dimensions, then the metric
    std::int64_t observed = 0;     ///< values from the data
    std::int64_t filled = 0;       ///< gaps that have a value now
};

/// A series that it does not give.
struct SeriesLeftOut
{
    std::string id;
    std::vector<std::string> name;
    std::string reason;
};

/// What came of a preparation.
struct PreparationResult
{
    TimeAxis axis;
    std::vector<DimensionValues> values; ///< of each dimension, by code from 1
    std::vector<SeriesOutcome> series;
    std::vector<SeriesLeftOut> leftOut;
};

/// The text of "TSDPOutput.json", docs/tcm.md. Calls `throwIfStopped` from time to time.
std::string tsdpDocument(const TsdpSettings& settings, const PreparationResult& result,
                         const std::function<void()>& throwIfStopped);

} // namespace EmbeddedHV
