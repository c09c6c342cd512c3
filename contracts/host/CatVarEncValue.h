#pragma once

/// Codes for values of a categorical variable.
enum CatVarEncValue : int
{
    kCatVarMissing = -1,
    kCatVarMinimum = 0
};
