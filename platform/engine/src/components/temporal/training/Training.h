#pragma once

#include <vector>

#include "components/temporal/base/SeriesTable.h"
#include "components/temporal/model/TcmModel.h"
#include "components/temporal/training/TrainingOptions.h"

namespace EmbeddedHV {

/// Trains a model on prepared series. `series` names the columns of the table in their order. Its
/// members isTarget and isCandidate are set here. Works on the caller's thread. Throws JobError if
/// no series can have an equation, and what the hooks throw. `component` begins every message.
TcmModel trainModel(const SeriesTable& table, std::vector<ModelSeries> series,
                    const TrainingOptions& options, const TrainingHooks& hooks,
                    const std::string& component);

} // namespace EmbeddedHV
