#include "components/descriptives/settings/CountSettings.h"

#include "steps/SettingWords.h"

namespace EmbeddedHV {
namespace {

enum NumberDistribution : int
{
    NoDistribution,
    InBins
};

const char* WordOf(NumberDistribution distribution)
{
    switch (distribution) {
    case NoDistribution:
        return "none";
    case InBins:
        return "bins";
    default:
        return nullptr;
    }
}

} // namespace

CountSettings countSettings(const Settings& settings)
{
    const auto flag = [&](const char* key) { return settings.flag(key).value_or(false); };
    CountSettings result;
    result.equalFrequencies = flag("useEqualFreqBinning");
    result.bins = result.equalFrequencies ||
                  wordSetting(settings, "computeDistSummaryForNumeric", NoDistribution) == InBins;
    result.zeroInflation = flag("zeroInflationDetection");
    result.dateDurations = flag("computeDateDuration");
    result.timeDurations = flag("computeTimeDuration");
    if (!settings.flag("computeSummaryStats").value_or(true)) {
        if (result.zeroInflation)
            settings.refuse("computeSummaryStats", "is false, but zeroInflationDetection needs it");
        // Bins of equal width lie between minimum and maximum.
        if (result.bins && !result.equalFrequencies)
            settings.refuse("computeSummaryStats",
                            "is false, but computeDistSummaryForNumeric needs it");
    }
    return result;
}

} // namespace EmbeddedHV
