#include "components/descriptives/settings/OutlierRule.h"

#include "steps/SettingWords.h"

namespace EmbeddedHV {

const char* WordOf(OutlierMethod method)
{
    switch (method) {
    case NoDetection:
        return "none";
    case StandardDeviation:
        return "standardDeviation";
    case InterquartileRange:
        return "interquartileRange";
    case MedianDeviation:
        return "medianDeviation";
    default:
        return nullptr;
    }
}

const char* WordOf(OutlierHandling handling)
{
    switch (handling) {
    case MarkOutliers:
        return "markOut";
    case TrimOutliers:
        return "trim";
    case WinsorizeOutliers:
        return "winsorize";
    default:
        return nullptr;
    }
}

std::optional<OutlierRule> outlierRuleOf(const Settings& settings)
{
    const auto handling = wordSetting(settings, "outlierHandlingMethod", MarkOutliers);
    const auto method = wordSetting(settings, "outlierDetectionMethod", NoDetection);
    const bool identifies = settings.flag("identifyExtremeOutliers").value_or(false);
    OutlierRule rule;
    rule.handling = handling.value_or(MarkOutliers);
    if (method && *method != NoDetection)
        rule.method = *method;
    else if (!identifies && rule.handling != MarkOutliers)
        settings.refuse("outlierHandlingMethod",
                        std::string("is \"") + WordOf(rule.handling) +
                            "\", but outlierDetectionMethod names no method to find outliers");
    else if (!identifies)
        return std::nullopt;
    if (!settings.flag("computeSummaryStats").value_or(true))
        settings.refuse("computeSummaryStats", "is false, but outliers are found from the summary");
    return rule;
}

} // namespace EmbeddedHV
