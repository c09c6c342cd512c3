#pragma once

#include <utility>
#include <vector>

#include "CFRange.h"
#include "CFValue.h"
#include "MetadataExport.h"

/// Which values of a field its user declares missing: a range, single values, or both.
class METADATA_API CFMissingValues
{
public:
    /// Nothing is declared.
    CFMissingValues() = default;
    /// A declaration, be it of no value. `nullMissing` says that a null counts as missing, and
    /// `whiteSpMissing` that a text of nothing but white space does.
    CFMissingValues(CFRange range, std::vector<CFValue> values, bool nullMissing,
                    bool whiteSpMissing)
        : _range(std::move(range)), _values(std::move(values)), _valid(true),
          _nullMissing(nullMissing), _whiteSpMissing(whiteSpMissing)
    {
    }

    /// Whether there is a declaration.
    bool IsValid() const { return _valid; }
    const CFRange& GetRange() const { return _range; }
    const std::vector<CFValue>& GetValues() const { return _values; }
    bool IsNullMissing() const { return _nullMissing; }
    bool IsWhiteSpMissing() const { return _whiteSpMissing; }

    friend bool operator==(const CFMissingValues&, const CFMissingValues&) = default;

private:
    CFRange _range;
    std::vector<CFValue> _values;
    bool _valid = false;
    bool _nullMissing = false;
    bool _whiteSpMissing = false;
};
