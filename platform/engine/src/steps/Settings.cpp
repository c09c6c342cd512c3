#include "steps/Settings.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "ErrorIds.h"
#include "base/NearestName.h"

namespace EmbeddedHV {
namespace {

/// The type of a value, in the user's words.
const char* wordOf(const Json& value)
{
    switch (value.type()) {
    case Json::value_t::object:
        return "an object";
    case Json::value_t::array:
        return "a list";
    case Json::value_t::string:
        return "a text";
    case Json::value_t::boolean:
        return "true or false";
    case Json::value_t::null:
        return "null";
    case Json::value_t::number_float:
        return "a real number";
    default:
        return "a number";
    }
}

FaultParts unknownSetting(const std::string& step, const std::string& path,
                          const std::string& suggestion)
{
    return {.step = step,
            .setting = path,
            .hasSuggestion = !suggestion.empty(),
            .what = "is not known here and is ignored" + suggestion};
}

} // namespace

Settings::Settings(const Json& object, std::string step, std::string path)
    : _object(object), _step(std::move(step)), _path(std::move(path))
{
    if (!_object.is_object())
        refuseType(_path, "an object", _object);
}

std::string Settings::pathOf(const std::string& key) const
{
    return _path.empty() ? key : _path + "." + key;
}

void Settings::refuse(const std::string& key, const std::string& problem, FaultParts parts) const
{
    parts.step = _step;
    parts.setting = pathOf(key);
    parts.what = problem;
    throw JobError(errors::kSettingType, std::move(parts));
}

void Settings::refuseType(const std::string& path, const char* wanted, const Json& found) const
{
    const std::string problem = std::string("must be ") + wanted + ", not " + wordOf(found);
    throw JobError(errors::kSettingType,
                   {.step = _step,
                    .setting = path,
                    .what = path.empty() ? "the configuration " + problem : problem});
}

void Settings::refuseMissing(const std::string& key) const
{
    throw JobError(errors::kSettingMissing,
                   {.step = _step, .setting = pathOf(key), .what = "is missing"});
}

const Json* Settings::find(const std::string& key) const
{
    // A key that the step asks for is known. Unknown keys are reported.
    _asked.insert(key);
    const auto found = _object.find(key);
    return found == _object.end() || found->is_null() ? nullptr : &*found;
}

std::optional<std::string> Settings::text(const std::string& key) const
{
    const Json* value = find(key);
    if (!value)
        return std::nullopt;
    return textOf(*value, key);
}

std::string Settings::neededText(const std::string& key) const
{
    const auto value = text(key);
    if (!value)
        refuseMissing(key);
    if (value->empty())
        refuse(key, "is empty");
    return *value;
}

std::optional<bool> Settings::flag(const std::string& key) const
{
    const Json* value = find(key);
    if (!value)
        return std::nullopt;
    if (!value->is_boolean())
        refuseType(pathOf(key), "true or false", *value);
    return value->get<bool>();
}

std::optional<std::int64_t> Settings::integer(const std::string& key) const
{
    const Json* value = find(key);
    if (!value)
        return std::nullopt;
    if (value->is_number_unsigned())
        return static_cast<std::int64_t>(
            std::min<std::uint64_t>(value->get<std::uint64_t>(), INT64_MAX));
    if (value->is_number_integer())
        return value->get<std::int64_t>();
    // The language reads an integer of more than 64 bits as a real.
    if (value->is_number_float() && value->get<double>() >= static_cast<double>(INT64_MAX))
        return INT64_MAX;
    refuseType(pathOf(key), "a whole number", *value);
}

std::optional<CFDatum> Settings::number(const std::string& key) const
{
    const Json* value = find(key);
    if (!value)
        return std::nullopt;
    if (!value->is_number())
        refuseType(pathOf(key), "a number", *value);
    const bool fits = value->is_number_integer() &&
                      (!value->is_number_unsigned() || value->get<std::uint64_t>() <= INT64_MAX);
    return fits ? CFDatum(value->get<std::int64_t>()) : CFDatum(value->get<double>());
}

Settings Settings::neededObject(const std::string& key) const
{
    const Json* value = find(key);
    if (!value)
        refuseMissing(key);
    return {*value, _step, pathOf(key)};
}

const Json& Settings::neededList(const std::string& key) const
{
    const Json* value = find(key);
    if (!value)
        refuseMissing(key);
    if (!value->is_array())
        refuseType(pathOf(key), "a list", *value);
    return *value;
}

Settings Settings::objectAt(const Json& list, const std::string& key, std::size_t index) const
{
    return {list[index], _step, pathOf(key) + "[" + std::to_string(index) + "]"};
}

std::string Settings::textAt(const Json& list, const std::string& key, std::size_t index) const
{
    return textOf(list[index], key + "[" + std::to_string(index) + "]");
}

std::string Settings::textOf(const Json& value, const std::string& key) const
{
    if (!value.is_string())
        refuseType(pathOf(key), "a text", value);
    auto text = value.get<std::string>();
    // Names of files and columns go to interfaces where a text ends at a zero byte.
    if (text.find('\0') != std::string::npos)
        refuse(key, "holds the character NUL");
    return text;
}

void Settings::reportOthers(const MessageSink& message) const
{
    const std::vector<std::string_view> known(_asked.begin(), _asked.end());
    for (const auto& [key, value] : _object.items())
        if (!_asked.contains(key))
            message(errors::kSettingIgnored,
                    unknownSetting(_step, pathOf(key), base::suggestion(key, known)));
}

} // namespace EmbeddedHV
