#pragma once

#include <string>
#include <vector>

#include "components/temporal/base/SeriesTable.h"
#include "components/temporal/base/StopCheck.h"
#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// The equations with the coefficients, residuals and residual variances that least squares give on
/// the table; their predictors and lags stay. Residuals are those of the table's points. The table
/// has a column for each series of the equations. `component` begins every message. Throws
/// JobError if the table does not determine an equation, and what `check` throws.
std::vector<SeriesEquation> refittedEquations(const TcmModel& model,
                                              const std::vector<const SeriesEquation*>& equations,
                                              const SeriesTable& table,
                                              const std::string& component, const StopCheck& check);

} // namespace EmbeddedHV
