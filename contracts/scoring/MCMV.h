#pragma once

#include "ScoringExport.h"

/// The missing value of numbers.
class SCORING_API MCMV
{
public:
    /// The most negative finite double. It equals the host's system-missing value. Any thread.
    static double Missing();
};
