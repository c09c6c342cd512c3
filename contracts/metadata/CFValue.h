#pragma once

#include <string>
#include <utility>
#include <vector>

#include "CFDatum.h"
#include "MetadataExport.h"

/// A value of a field with its label: an entry of the lists in CFField. A value type.
class METADATA_API CFValue
{
public:
    /// Properties of a value.
    enum Property : int
    {
        Valid = 0,   ///< an ordinary value
        Invalid = 1, ///< a value that the field does not allow
        Missing = 2  ///< a value that counts as missing
    };

    /// A null datum without label.
    CFValue() = default;
    /// `property` is one of Property or another number that the owner defines. `order` is a
    /// position among the values of the field. Both are stored but not interpreted.
    explicit CFValue(CFDatum datum, std::string label = {}, int property = Valid, int order = 0)
        : _datum(std::move(datum)), _label(std::move(label)), _property(property), _order(order)
    {
    }

    /// The value.
    const CFDatum& GetDatum() const { return _datum; }
    /// The label; empty for none.
    const std::string& GetLabel() const { return _label; }
    /// Sets the label.
    void SetLabel(std::string label) { _label = std::move(label); }
    /// The property given to the constructor.
    int GetProperty() const { return _property; }
    /// The order given to the constructor.
    int GetOrder() const { return _order; }
    /// The datum as the shortest text: CFDatum::ToString(-1).
    std::string GetText() const { return _datum.ToString(-1); }

    /// The index of the first value in the list whose datum compares equal; -1 if no value does.
    static int GetIndex(const CFDatum& datum, const std::vector<CFValue>& values);

    friend bool operator==(const CFValue&, const CFValue&) = default;

private:
    CFDatum _datum;
    std::string _label;
    int _property = Valid;
    int _order = 0;
};
