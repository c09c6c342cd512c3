#pragma once

/// Codes for values of a categorical variable.
enum CatVarEncValue : int
{
    kCatVarMissing = -1, ///< the value is missing
    kCatVarMinimum = 0   ///< the first category
};
