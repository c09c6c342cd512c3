#pragma once

#include "ScoringExport.h"

/// The missing value of numbers.
class SCORING_API MCMV
{
public:
    /// The most negative finite double, as the host's system-missing value.
    static double Missing();
};
