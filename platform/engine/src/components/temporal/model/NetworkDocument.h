#pragma once

#include <string>

#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// The edge from a predictor to a target in the network document.
struct NetworkEdge
{
    std::size_t predictor = 0;
    int strongestLag = 1; ///< of the largest coefficient by absolute value
    double coefficientSum = 0;
    double fStatistic = 0;
    double pValue = 1;
};

/// The edges of an equation in the order of its groups, that of the target's own past first.
std::vector<NetworkEdge> edgesOf(const SeriesEquation& equation);

/// The document TCMGraph.json: the targets with their predictors.
std::string networkDocument(const TcmModel& model);

} // namespace EmbeddedHV
