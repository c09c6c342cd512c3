#pragma once

#include "components/temporal/model/ModelArchive.h"
#include "components/temporal/scoring/Scoring.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The settings of tcm:score and tcm:ar.
struct ScoreSettings
{
    ScoringRequest request;
    bool givesActual = false; ///< "outputOriginalValue"
};

/// Reads the configuration of a call. Throws JobError that names the setting.
ScoreSettings scoreSettings(const StepCall& call, const ModelArchive& archive,
                            const TcmModel& model, PredictedBy by);

} // namespace EmbeddedHV
