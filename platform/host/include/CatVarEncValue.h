#pragma once

/// How a value of a categorical variable is encoded where the order of its categories counts.
enum CatVarEncValue : int
{
    kCatVarMissing = -1,
    kCatVarMinimum = 0
};
