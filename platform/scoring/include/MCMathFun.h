#pragma once

#include "ScoringExport.h"

/// Questions about numbers.
class SCORING_API MCMathFun
{
public:
    /// Whether a number is a value: finite, and not the missing value.
    static bool IsValidDouble(double value);
};
