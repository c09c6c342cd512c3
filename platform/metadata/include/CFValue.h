#pragma once

#include <string>
#include <utility>
#include <vector>

#include "CFDatum.h"
#include "MetadataExport.h"

/// A value that a field may have, with its label: an entry of the lists of a CFField.
class METADATA_API CFValue
{
public:
    /// What a list says of its value.
    enum Property : int
    {
        Valid = 0,
        Invalid = 1,
        Missing = 2
    };

    CFValue() = default;
    /// `property` is one of Property, or a number that its owner gives a meaning to, as is `order`,
    /// a place among the values of the field. Both are carried, and mean nothing to the lists.
    explicit CFValue(CFDatum datum, std::string label = {}, int property = Valid, int order = 0)
        : _datum(std::move(datum)), _label(std::move(label)), _property(property), _order(order)
    {
    }

    const CFDatum& GetDatum() const { return _datum; }
    /// Empty for a value without a label.
    const std::string& GetLabel() const { return _label; }
    void SetLabel(std::string label) { _label = std::move(label); }
    int GetProperty() const { return _property; }
    int GetOrder() const { return _order; }
    /// The datum as text: what CFDatum::ToString gives for -1.
    std::string GetText() const { return _datum.ToString(-1); }

    /// The place of the first value in the list whose datum compares equal; -1 if there is none.
    static int GetIndex(const CFDatum& datum, const std::vector<CFValue>& values);

    friend bool operator==(const CFValue&, const CFValue&) = default;

private:
    CFDatum _datum;
    std::string _label;
    int _property = Valid;
    int _order = 0;
};
