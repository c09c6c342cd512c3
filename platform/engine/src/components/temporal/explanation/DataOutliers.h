#pragma once

#include <vector>

#include "components/temporal/explanation/CausalNetwork.h"
#include "components/temporal/explanation/ModelData.h"

namespace EmbeddedHV {

/// The outliers of the targets in the data, by series, then by time: residuals beyond the quantile
/// of Student's t distribution that the model's outlier level sets, on either side. The deviation
/// of a residual is that of the training. Throws what `check` throws.
std::vector<SeriesOutlier> outliersIn(const TcmModel& model, const ModelData& data,
                                      const StopCheck& check);

/// At most `most` of the outliers in their order: those with the smallest p values, of equal ones
/// the first.
std::vector<SeriesOutlier> leastLikely(const std::vector<SeriesOutlier>& outliers,
                                       std::size_t most);

} // namespace EmbeddedHV
