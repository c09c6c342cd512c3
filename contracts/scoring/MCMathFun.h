#pragma once

#include "ScoringExport.h"

/// Tests of numbers.
class SCORING_API MCMathFun
{
public:
    /// Whether a number is finite and not the missing value. Any thread.
    static bool IsValidDouble(double value);
};
