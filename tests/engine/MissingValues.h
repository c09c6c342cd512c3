#pragma once

#include "CFMissingValues.h"

/// A declaration of missing values as a data file gives it back: null counts, white space does not.
template <class... Values>
CFMissingValues missing(const CFRange& range, const Values&... values)
{
    return {range, {CFValue(CFDatum(values))...}, true, false};
}
