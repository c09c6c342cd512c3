#pragma once

#include <nlohmann/json.hpp>

#include "hvhost/tcm/TcmModelFacts.h"
#include "tcm/HVForecast.h"

/// Charts for result documents.

/// The network of a model: its series, and an arrow from each predictor to its target. The own past
/// of a target has no arrow.
nlohmann::ordered_json networkChart(const TcmModelFacts& facts);

/// One node of an impact diagram: causes have negative levels, effects positive ones.
struct ImpactShown
{
    std::string name;
    int level = 0;
};
/// The nodes in columns by level, `edges` between them: records with "Predictor", "Target", "Lag",
/// "Effect" and "p".
nlohmann::ordered_json impactChart(const std::string& series, const std::vector<ImpactShown>& nodes,
                                   nlohmann::ordered_json edges);

/// The actual and predicted values of a series, with the bounds as an area. `times` are the
/// texts of the points of time.
nlohmann::ordered_json forecastChart(const std::string& series, const HVSeriesForecast& forecast,
                                     const std::vector<std::string>& times);
