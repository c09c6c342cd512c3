#pragma once

#include <string>
#include <vector>

#include "hvhost/tcm/TcmModelFacts.h"
#include "tcm/HVForecast.h"

/// A point of time that --set names.
struct ScenarioPoint
{
    std::string option; ///< as the user wrote it
    std::string text;   ///< the text between the brackets
};

/// One --set: SERIES[TIME]=VALUE, where TIME is a point of the forecast as shown, +N for the
/// Nth one, or * for all, and VALUE a number, or a change in percent as in +10%.
struct ScenarioOption
{
    HVScenarioValue value; ///< without the point
    ScenarioPoint point;
    /// Whether the point can only be found with the points of the forecast.
    bool namesTime() const;
};

/// Reads the options. Throws CommandFault (Usage), naming the option, for an option of another
/// form, and for a series that the model does not have.
std::vector<ScenarioOption> parseScenario(const std::vector<std::string>& options,
                                          const TcmModelFacts& facts);

/// The values with their points: `times` are those of the forecast, as they are shown. Throws
/// CommandFault (Usage) for a point that is not among them.
std::vector<HVScenarioValue> placedScenario(const std::vector<ScenarioOption>& options,
                                            const std::vector<std::string>& times);
