#include "hvhost/show/OrderValue.h"

#include "hvhost/base/CommandFault.h"

std::string OrderValue::origin() const
{
    return _path.empty() ? _file->name : _file->name + ": " + _path;
}

void OrderValue::refuse(const std::string& what, const std::string& hint) const
{
    throw CommandFault(ExitStatus::Input, origin() + ": " + what, hint);
}

void OrderValue::refuseKind(const std::string& wanted) const
{
    refuse(wanted + " is needed here, and this is of type " + _json->type_name());
}

std::string OrderValue::text() const
{
    if (!_json->is_string())
        refuseKind("a text");
    return _json->get<std::string>();
}

bool OrderValue::flag() const
{
    if (!_json->is_boolean())
        refuseKind("true or false");
    return _json->get<bool>();
}

std::vector<OrderValue> OrderValue::elements() const
{
    if (!_json->is_array())
        return {*this};
    std::vector<OrderValue> elements;
    for (const nlohmann::ordered_json& element : *_json)
        elements.push_back(
            OrderValue(*_file, element, _path + "[" + std::to_string(elements.size()) + "]"));
    return elements;
}

std::vector<std::string> OrderValue::texts() const
{
    std::vector<std::string> texts;
    for (const OrderValue& element : elements())
        texts.push_back(element.text());
    return texts;
}

std::vector<std::pair<std::string, OrderValue>> OrderValue::members() const
{
    if (!_json->is_object())
        refuseKind("an object");
    std::vector<std::pair<std::string, OrderValue>> members;
    for (const auto& [key, value] : _json->items())
        members.emplace_back(key,
                             OrderValue(*_file, value, _path.empty() ? key : _path + "." + key));
    return members;
}
