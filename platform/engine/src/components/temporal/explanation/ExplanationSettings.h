#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "components/temporal/explanation/PointLabels.h"
#include "components/temporal/model/SeriesLookup.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The kinds of results of the component.
enum class ArtifactKind
{
    ImpactEffects,
    ImpactCauses,
    Network,
    Fit,
    Equations,
    Outliers,
    RootCause,
    Forecast
};

/// One artifact that is asked for.
struct ArtifactRequest
{
    ArtifactKind kind = ArtifactKind::Network;
    std::string name; ///< as the settings name it
    /// Places of series in the model. For some kinds, an empty list means all.
    std::vector<std::size_t> targets;
    std::int64_t level = 1; ///< at least 1
    std::int64_t span = 0;  ///< of a forecast: points of time beyond the data
    double confidenceLevel = 0.95;
};

/// The configuration of the component.
struct ExplanationSettings
{
    std::vector<ArtifactRequest> artifacts;
    bool isEncoded = false; ///< series are named by their ids, in the settings and in the results
    TimeOfDay timeOfDay = TimeOfDay::Seconds;
};

/// Reads the configuration, and sends a message for each setting without effect. `lookup` finds
/// series by their names. Throws JobError.
ExplanationSettings explanationSettings(const StepCall& call, const TcmModel& model,
                                        const SeriesLookup& lookup);

} // namespace EmbeddedHV
