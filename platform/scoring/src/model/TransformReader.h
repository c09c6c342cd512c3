#pragma once

#include <memory>

#include "MCSettings.h"
#include "model/TransformModel.h"
#include "pmml/PmmlDocument.h"

namespace scoring {

/// The transform model of a document without a model of another kind. Its inputs are the data
/// fields that derived fields use, in the order of the data dictionary; its outputs the derived
/// fields in the order of the document, without the texts that others are made from, which are
/// steps on the way. Throws ModelFault.
std::unique_ptr<TransformModel> readTransformModel(const PmmlDocument& document,
                                                   const MCSettings& settings);

} // namespace scoring
