#pragma once

#include <memory>

#include "MCSettings.h"
#include "model/TransformModel.h"
#include "pmml/PmmlDocument.h"

namespace scoring {

/// Reads the transform model of a document. The inputs are the data fields that derived fields use,
/// in the order of the data dictionary. The outputs are the derived fields in the order of the
/// document, except texts that other derived fields use, which are intermediate results. Throws
/// ModelFault.
std::unique_ptr<TransformModel> readTransformModel(const PmmlDocument& document,
                                                   const MCSettings& settings);

} // namespace scoring
