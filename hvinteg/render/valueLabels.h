#pragma once

#include <map>
#include <string>

#include "support/HvintegExport.h"

/// Labels of the values of a field; numbers and texts are separate. A value type. Texts are UTF-8.
class HVINTEG_EXPORT valueLabels
{
public:
    /// Sets the label of a number and replaces an earlier one.
    void addValueLabel(double value, const std::string& label);
    /// Sets the label of a text and replaces an earlier one.
    void addValueLabel(const std::string& value, const std::string& label);
    /// The label of a number, found by exact equality; empty if it has none.
    std::string getValueLabel(double value) const;
    /// The label of a text; empty if it has none.
    std::string getValueLabel(const std::string& value) const;

private:
    std::map<std::string, std::string> _texts;
    std::map<double, std::string> _numbers;
};
