#pragma once

#include "steps/Settings.h"

namespace EmbeddedHV {

/// Further statistics of fields.
struct CountSettings
{
    bool bins = false;
    bool equalFrequencies = false; ///< of bins; otherwise they have equal widths
    bool zeroInflation = false;
    bool dateDurations = false;
    bool timeDurations = false;

    bool any() const { return bins || zeroInflation || dateDurations || timeDurations; }
};

/// Reads computeDistSummaryForNumeric, useEqualFreqBinning, zeroInflationDetection,
/// computeDateDuration and computeTimeDuration. Throws JobError.
CountSettings countSettings(const Settings& settings);

} // namespace EmbeddedHV
