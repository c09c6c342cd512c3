#pragma once

#include "components/temporal/model/SeriesLookup.h"
#include "components/temporal/training/TrainingOptions.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// Reads the configuration of tcm:train. `lookup` finds the series of the input. Sends a message
/// for each unknown setting. Throws JobError that names the setting.
TrainingOptions trainingOptions(const Settings& settings, const SeriesLookup& lookup,
                                const MessageSink& message);

} // namespace EmbeddedHV
