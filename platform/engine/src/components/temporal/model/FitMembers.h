#pragma once

#include <optional>

#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// A statistic of an equation that may be absent, with its name in JSON documents.
struct FitMember
{
    const char* key;
    std::optional<double> FitStatistics::*value;
};

inline constexpr FitMember kFitMembers[] = {
    {"rSquared", &FitStatistics::rSquared}, {"adjustedRSquared", &FitStatistics::adjustedRSquared},
    {"rmse", &FitStatistics::rmse},         {"rmspe", &FitStatistics::rmspe},
    {"mae", &FitStatistics::mae},           {"aic", &FitStatistics::aic},
    {"bic", &FitStatistics::bic},           {"durbinWatson", &FitStatistics::durbinWatson},
    {"ljungBox", &FitStatistics::ljungBox}, {"ljungBoxPValue", &FitStatistics::ljungBoxPValue},
};

} // namespace EmbeddedHV
