#pragma once

#include <optional>

#include "components/temporal/model/TcmModel.h"
#include "components/temporal/training/ScaledSeries.h"
#include "components/temporal/training/TrainingOptions.h"

namespace EmbeddedHV {

/// The least-squares model that a series has of its own past, with the order from 0 to `maxOrder`
/// of the least criterion. Orders are compared on the same points of time, those that have
/// `maxOrder` lags; the model is fitted on all that have its own lags. Nothing if the series has
/// fewer than two values or may not be computed with.
std::optional<SeriesEquation> autoregressionFor(const SeriesTable& table,
                                                const ScaledSeries& series, std::size_t place,
                                                int maxOrder, SelectionCriterion criterion);

} // namespace EmbeddedHV
