#pragma once

#include <map>
#include <string>

#include "support/HvintegExport.h"

/// Labels of the values of a field, numbers and texts apart; a plain value. Texts are UTF-8.
class HVINTEG_EXPORT valueLabels
{
public:
    /// Sets the label of a value; one that it has is replaced.
    void addValueLabel(double value, const std::string& label);
    void addValueLabel(const std::string& value, const std::string& label);
    /// The label, empty if the value has none. A number is found by exact equality.
    std::string getValueLabel(double value) const;
    std::string getValueLabel(const std::string& value) const;

private:
    std::map<std::string, std::string> _texts;
    std::map<double, std::string> _numbers;
};
