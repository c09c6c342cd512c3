#pragma once

#include <string>
#include <vector>

#include "CFField.h"

/// A value beyond the data that the caller gives. It replaces the prediction of the model.
struct HVScenarioValue
{
    std::vector<std::string> series; ///< values of the dimension fields, then the metric
    int ahead = 0;                   ///< 1 is the first point after the data; 0 means all points
    double value = 0;                ///< replaces the prediction, unless isRelative
    bool isRelative = false; ///< `value` is a share to add to the prediction: 0.1 for 10 % more
};

/// The settings of a forecast.
struct HVForecastRequest
{
    int horizon = 0;                       ///< points of time after the last one of the data
    double confidenceLevel = 0.95;         ///< of the bounds, 0 to 1
    std::vector<HVScenarioValue> scenario; ///< values that replace predictions
};

/// One point of time of a series. Unknown values are the host's system-missing value.
struct HVSeriesPoint
{
    std::vector<double> time; ///< a number for each time field, on the engine's scale
    bool isFuture = false;    ///< after the data
    double actual = 0;        ///< in the data
    double predicted = 0;     ///< by the model
    double lower = 0;         ///< bound of the prediction
    double upper = 0;         ///< bound of the prediction
};

/// A series and its predictions, in the order of time.
struct HVSeriesForecast
{
    std::vector<CFField> timeFields;   ///< one for each number in HVSeriesPoint::time
    std::vector<HVSeriesPoint> points; ///< in the order of time
};
