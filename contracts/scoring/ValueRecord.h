#pragma once

#include <string>
#include <vector>

#include "ScoringExport.h"
#include "Value.h"

/// The values that a computer reads or writes, by position. Each value has a name, for callers that
/// show it. A record is made once and refilled for each row.
class SCORING_API ValueRecord
{
public:
    /// Makes an empty record that reserves memory for `capacity` values.
    explicit ValueRecord(int capacity);
    virtual ~ValueRecord() = default;
    ValueRecord(const ValueRecord&) = default;
    ValueRecord& operator=(const ValueRecord&) = default;

    /// Appends a value with its name.
    virtual void AddValue(const std::string& name, const Value& value);

    /// The number of values.
    int Size() const { return static_cast<int>(_values.size()); }
    /// The name of the value at an index from 0. Throws std::out_of_range.
    const std::string& GetName(int index) const;
    /// The value at an index from 0. Throws std::out_of_range.
    Value& operator[](int index);
    /// The value at an index from 0. Throws std::out_of_range.
    const Value& operator[](int index) const;

private:
    std::vector<std::string> _names;
    std::vector<Value> _values;
};
