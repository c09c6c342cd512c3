#pragma once

#include <utility>

#include "CFDatum.h"
#include "MetadataExport.h"

/// The values from a lower to an upper limit, limits included. A null limit means no limit. A value
/// type.
class METADATA_API CFRange
{
public:
    /// The empty range, without limits.
    CFRange() = default;
    /// A range with these limits.
    CFRange(CFDatum lower, CFDatum upper) : _lower(std::move(lower)), _upper(std::move(upper)) {}

    /// Whether there are no limits.
    bool IsEmpty() const { return _lower.IsNull() && _upper.IsNull(); }
    /// The lower limit; null for none.
    const CFDatum& GetLower() const { return _lower; }
    /// The upper limit; null for none.
    const CFDatum& GetUpper() const { return _upper; }

    friend bool operator==(const CFRange&, const CFRange&) = default;

private:
    CFDatum _lower;
    CFDatum _upper;
};
