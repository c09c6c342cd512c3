#include "render/dataField.h"

void dataField::addValueLabel(double value, const std::string& label)
{
    _valueLabels.addValueLabel(value, label);
}

void dataField::addValueLabel(const std::string& value, const std::string& label)
{
    _valueLabels.addValueLabel(value, label);
}

std::string dataField::getValueLabel(double value) const
{
    return _valueLabels.getValueLabel(value);
}

std::string dataField::getValueLabel(const std::string& value) const
{
    return _valueLabels.getValueLabel(value);
}
