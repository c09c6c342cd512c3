#pragma once

#include <optional>

#include "steps/Settings.h"

namespace EmbeddedHV {

/// The measure of the distance of a value from the centre of its field.
enum OutlierMethod : int
{
    NoDetection,
    StandardDeviation,
    InterquartileRange,
    MedianDeviation
};

/// What happens to outliers before the statistics are computed.
enum OutlierHandling : int
{
    MarkOutliers,     ///< they stay and are reported
    TrimOutliers,     ///< they become missing
    WinsorizeOutliers ///< they become equal to the bound
};

/// The words of the settings; null for other values.
const char* WordOf(OutlierMethod method);
const char* WordOf(OutlierHandling handling);

struct OutlierRule
{
    OutlierMethod method = InterquartileRange;
    OutlierHandling handling = MarkOutliers;
};

/// Reads identifyExtremeOutliers, outlierDetectionMethod and outlierHandlingMethod. Empty if no
/// outliers are to be found. Throws JobError.
std::optional<OutlierRule> outlierRuleOf(const Settings& settings);

} // namespace EmbeddedHV
