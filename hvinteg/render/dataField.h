#pragma once

#include <string>

#include "render/valueLabels.h"
#include "support/HvintegExport.h"

/// A field of result data, with the properties that output uses. A value type. Texts are UTF-8.
class HVINTEG_EXPORT dataField
{
public:
    /// Sets the name.
    void setName(const std::string& name) { _name = name; }
    /// The name; empty if the document has none.
    const std::string& getName() const { return _name; }
    /// Sets the label.
    void setLabel(const std::string& label) { _label = label; }
    /// The label; empty if the document has none.
    const std::string& getLabel() const { return _label; }
    /// Sets the word for the measurement level.
    void setMeasurementLevel(const std::string& level) { _measurementLevel = level; }
    /// The word for the measurement level; empty if the document has none.
    std::string getMeasurementLevel() const { return _measurementLevel; }
    /// Sets the word for the storage. "date", "time", "timestamp" and "string" decide how values
    /// are shown; other words have no effect.
    void setStorage(const std::string& storage) { _storage = storage; }
    /// The word for the storage; empty if the document has none.
    const std::string& getStorage() const { return _storage; }
    /// Sets the word for the role.
    void setRole(const std::string& role) { _role = role; }
    /// The word for the role; empty if the document has none.
    const std::string& getRole() const { return _role; }
    /// Sets the number of decimal places.
    void setDecimalPlaces(int places) { _decimalPlaces = places; }
    /// The number of decimal places; 0 by default.
    int getDecimalPlaces() const { return _decimalPlaces; }

    /// Sets the label of a numeric value and replaces an earlier one.
    void addValueLabel(double value, const std::string& label);
    /// Sets the label of a text value and replaces an earlier one.
    void addValueLabel(const std::string& value, const std::string& label);
    /// The label of a number, found by exact equality; empty if it has none.
    std::string getValueLabel(double value) const;
    /// The label of a text; empty if it has none.
    std::string getValueLabel(const std::string& value) const;

private:
    std::string _name;
    std::string _label;
    std::string _measurementLevel;
    std::string _storage;
    std::string _role;
    valueLabels _valueLabels;
    int _decimalPlaces = 0;
};
