#pragma once

#include <vector>

#include "components/temporal/model/TcmModel.h"
#include "components/temporal/training/TrainingOptions.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Reads the configuration of tcm:train. `series` are those of the input, which lists of series are
/// looked up in. Tells of each setting that is unknown. Throws JobError that names the setting.
TrainingOptions trainingOptions(const Settings& settings, const std::vector<ModelSeries>& series,
                                const MessageSink& message);

} // namespace EmbeddedHV
