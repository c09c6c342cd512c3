#include "render/valueLabels.h"

#include <cmath>

namespace {
template <class Value>
std::string labelIn(const std::map<Value, std::string>& labels, const Value& value)
{
    const auto found = labels.find(value);
    return found == labels.end() ? std::string() : found->second;
}
} // namespace

void valueLabels::addValueLabel(double value, const std::string& label)
{
    // NaN equals no number and would break the order of the map.
    if (!std::isnan(value))
        _numbers[value] = label;
}

void valueLabels::addValueLabel(const std::string& value, const std::string& label)
{
    _texts[value] = label;
}

std::string valueLabels::getValueLabel(double value) const
{
    return std::isnan(value) ? std::string() : labelIn(_numbers, value);
}

std::string valueLabels::getValueLabel(const std::string& value) const
{
    return labelIn(_texts, value);
}
