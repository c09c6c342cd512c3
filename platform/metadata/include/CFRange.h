#pragma once

#include <utility>

#include "CFDatum.h"
#include "MetadataExport.h"

/// The values from a lower to an upper limit, both within; a null limit leaves that side open.
class METADATA_API CFRange
{
public:
    /// The empty range: no limits, no values.
    CFRange() = default;
    CFRange(CFDatum lower, CFDatum upper) : _lower(std::move(lower)), _upper(std::move(upper)) {}

    /// Whether there is no limit at all.
    bool IsEmpty() const { return _lower.IsNull() && _upper.IsNull(); }
    const CFDatum& GetLower() const { return _lower; }
    const CFDatum& GetUpper() const { return _upper; }

    friend bool operator==(const CFRange&, const CFRange&) = default;

private:
    CFDatum _lower;
    CFDatum _upper;
};
