#include "model/DataField.h"

#include <algorithm>

#include "MCMV.h"
#include "Value.h"
#include "pmml/DataType.h"
#include "pmml/Literal.h"
#include "pmml/ModelFault.h"
#include "pmml/PmmlDocument.h"
#include "values/Calendar.h"
#include "values/CellText.h"

namespace scoring {
namespace {

/// Without a data type, the form of the values in a row is unknown.
ValueKind kindOf(pugi::xml_node element)
{
    const auto type = dataTypeOf(element);
    if (!type)
        throw ModelFault("the data field \"" + required(element, "name") + "\" has no data type");
    return type->kind;
}

} // namespace

DataField::DataField(pugi::xml_node element)
    : _variable(required(element, "name"), kindOf(element)), _scale(timeScaleOf(element))
{
    for (const pugi::xml_node value : elementsIn(element, "Value"))
        add(value);
    for (const pugi::xml_node interval : elementsIn(element, "Interval"))
        _intervals.push_back(intervalOf(interval));
    if (!_intervals.empty() && _variable.isText())
        throw ModelFault("the data field \"" + _variable.name() + "\" is a text with intervals");
}

void DataField::add(pugi::xml_node value)
{
    const std::string text = required(value, "value");
    const std::string_view property = value.attribute("property").value();
    if (!property.empty() && property != "valid" && property != "invalid" && property != "missing")
        throw ModelFault("a value has the unknown property \"" + std::string(property) + "\"");
    ValueSet& set = property == "missing" ? _missing : property == "invalid" ? _invalid : _valid;
    if (_variable.isText())
        set.texts.insert(text);
    else if (const auto cell = parseCell(text, _variable.kind()))
        set.numbers.insert(cell->number);
    else
        throw ModelFault("the data field \"" + _variable.name() + "\" lists \"" + text +
                         "\", which is not a value of its type");
}

bool DataField::ValueSet::contains(const Cell& cell, bool isText) const
{
    return isText ? texts.contains(cell.text) : numbers.contains(cell.number);
}

/// Missing values come first: a model may declare a value missing that is outside its intervals.
Cell DataField::read(const Value& value) const
{
    const bool isText = _variable.isText();
    if (isText != value.IsText())
        return value.IsText() || value.GetNumber() != MCMV::Missing() ? Cell::invalid()
                                                                      : Cell::missing();
    // A row marks a missing text with an empty one.
    if (isText ? value.GetText().empty() : value.GetNumber() == MCMV::Missing())
        return Cell::missing();
    Cell cell = isText ? Cell::of(std::string_view(value.GetText())) : Cell::of(value.GetNumber());
    if (_variable.kind() == ValueKind::Moment)
        cell.number = canonicalMoment(cell.number);
    if (_missing.contains(cell, isText))
        return Cell::missing();
    return cell.isPresent() && isValid(cell) ? cell : Cell::invalid();
}

/// Listed values and intervals are both valid. Without either, every value is valid unless it is
/// declared invalid.
bool DataField::isValid(const Cell& cell) const
{
    const bool isText = _variable.isText();
    if (_invalid.contains(cell, isText))
        return false;
    if (_variable.kind() == ValueKind::Boolean && cell.number != 0 && cell.number != 1)
        return false;
    if (_valid.isEmpty() && _intervals.empty())
        return true;
    return _valid.contains(cell, isText) ||
           std::any_of(_intervals.begin(), _intervals.end(), [&cell](const Interval& interval) {
               return interval.contains(cell.number);
           });
}

} // namespace scoring
