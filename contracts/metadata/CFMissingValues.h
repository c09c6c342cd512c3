#pragma once

#include <utility>
#include <vector>

#include "CFRange.h"
#include "CFValue.h"
#include "MetadataExport.h"

/// The declared missing values of a field: a range, single values, or both. A value type.
class METADATA_API CFMissingValues
{
public:
    /// No declaration.
    CFMissingValues() = default;
    /// A declaration, possibly without values. `nullMissing`: null counts as missing.
    /// `whiteSpMissing`: a text of white space counts as missing.
    CFMissingValues(CFRange range, std::vector<CFValue> values, bool nullMissing,
                    bool whiteSpMissing)
        : _range(std::move(range)), _values(std::move(values)), _valid(true),
          _nullMissing(nullMissing), _whiteSpMissing(whiteSpMissing)
    {
    }

    /// Whether there is a declaration.
    bool IsValid() const { return _valid; }
    /// The range; empty for none.
    const CFRange& GetRange() const { return _range; }
    /// The single values.
    const std::vector<CFValue>& GetValues() const { return _values; }
    /// Whether null counts as missing.
    bool IsNullMissing() const { return _nullMissing; }
    /// Whether a text of white space counts as missing.
    bool IsWhiteSpMissing() const { return _whiteSpMissing; }

    friend bool operator==(const CFMissingValues&, const CFMissingValues&) = default;

private:
    CFRange _range;
    std::vector<CFValue> _values;
    bool _valid = false;
    bool _nullMissing = false;
    bool _whiteSpMissing = false;
};
