#pragma once

#include <string>
#include <vector>

#include "ScoringExport.h"
#include "Value.h"

/// Values by position, which a computer takes or gives; each has a name, for whoever looks at it.
/// Made once and filled anew for each row.
class SCORING_API ValueRecord
{
public:
    /// Empty, with room for so many values.
    explicit ValueRecord(int capacity);
    virtual ~ValueRecord() = default;
    ValueRecord(const ValueRecord&) = default;
    ValueRecord& operator=(const ValueRecord&) = default;

    /// Adds a value behind the others.
    virtual void AddValue(const std::string& name, const Value& value);

    int Size() const { return static_cast<int>(_values.size()); }
    const std::string& GetName(int index) const;
    /// std::out_of_range where there is none.
    Value& operator[](int index);
    const Value& operator[](int index) const;

private:
    std::vector<std::string> _names;
    std::vector<Value> _values;
};
