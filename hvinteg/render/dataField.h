#pragma once

#include <string>

#include "render/valueLabels.h"
#include "support/HvintegExport.h"

/// A field of result data, as far as output shows it; a plain value. Texts are UTF-8.
class HVINTEG_EXPORT dataField
{
public:
    /// What the document says of the field; each empty where it says nothing.
    void setName(const std::string& name) { _name = name; }
    const std::string& getName() const { return _name; }
    void setLabel(const std::string& label) { _label = label; }
    const std::string& getLabel() const { return _label; }
    void setMeasurementLevel(const std::string& level) { _measurementLevel = level; }
    std::string getMeasurementLevel() const { return _measurementLevel; }
    /// "date", "time", "timestamp" and "string" decide how values are shown; any other word is kept
    /// as it is.
    void setStorage(const std::string& storage) { _storage = storage; }
    const std::string& getStorage() const { return _storage; }
    void setRole(const std::string& role) { _role = role; }
    const std::string& getRole() const { return _role; }
    void setDecimalPlaces(int places) { _decimalPlaces = places; }
    int getDecimalPlaces() const { return _decimalPlaces; }

    /// As in valueLabels.
    void addValueLabel(double value, const std::string& label);
    void addValueLabel(const std::string& value, const std::string& label);
    std::string getValueLabel(double value) const;
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
