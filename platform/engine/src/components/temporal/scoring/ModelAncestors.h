#pragma once

#include <string>
#include <vector>

#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// By which equations series are predicted.
enum class PredictedBy
{
    Causes, ///< targets by their causal equations, other series by their own past
    OwnPast ///< all series by their own past
};

/// The equations of the series asked for and of all series that those are predicted from, directly
/// or not: the former first, each series once. The equations are borrowed from the model.
/// `component` begins every message. Throws JobError if a series has no equation.
std::vector<const SeriesEquation*> ancestorEquations(const TcmModel& model,
                                                     const std::vector<std::size_t>& asked,
                                                     PredictedBy by, const std::string& component);

} // namespace EmbeddedHV
