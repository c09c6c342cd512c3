#include "datafile/FaultJson.h"

#include <string>
#include <utility>

#include <nlohmann/json.hpp>

#include "base/JsonDepth.h"

namespace datafile {
namespace {

using FaultObject = nlohmann::ordered_json;

constexpr base::JsonBounds kMostOfFault{.depth = 8, .values = 1000};

/// The members that are texts and may be missing.
constexpr std::pair<const char*, std::string FaultParts::*> kTexts[] = {
    {"step", &FaultParts::step},       {"iterator", &FaultParts::iterator},
    {"field", &FaultParts::field},     {"setting", &FaultParts::setting},
    {"namedBy", &FaultParts::namedBy}, {"name", &FaultParts::name},
    {"kind", &FaultParts::kind},
};

void addPlace(FaultObject& object, const TextPlace& place)
{
    if (place.line > 0)
        object["line"] = place.line;
    if (place.column > 0)
        object["column"] = place.column;
}

void addParts(FaultObject& object, const FaultParts& parts)
{
    for (const auto& [key, member] : kTexts)
        if (!(parts.*member).empty())
            object[key] = parts.*member;
    if (!parts.file.empty()) {
        object["file"] = {{"path", parts.file}};
        addPlace(object["file"], parts.inFile);
    }
    if (parts.inJob.line > 0)
        addPlace(object["job"], parts.inJob);
    if (!parts.series.empty())
        object["series"] = parts.series;
    if (parts.record > 0)
        object["record"] = parts.record;
    if (parts.group > 0)
        object["group"] = parts.group;
    if (parts.limit)
        object["limit"] = *parts.limit;
    if (parts.hasSuggestion)
        object["hasSuggestion"] = true;
    object["what"] = parts.what;
}

std::string dumped(const FaultObject& object)
{
    return object.dump(-1, ' ', false, FaultObject::error_handler_t::replace);
}

/// The member if it is a text; else empty.
std::string faultText(const FaultObject& object, const char* key)
{
    const auto member = object.find(key);
    return member == object.end() || !member->is_string() ? std::string()
                                                          : member->get<std::string>();
}

/// The texts of the member if it is a list; else empty.
std::vector<std::string> faultTexts(const FaultObject& object, const char* key)
{
    std::vector<std::string> texts;
    if (const auto member = object.find(key); member != object.end() && member->is_array())
        for (const FaultObject& element : *member)
            if (element.is_string())
                texts.push_back(element.get<std::string>());
    return texts;
}

/// The member if it is a number from 0; else 0.
std::uint64_t faultNumber(const FaultObject& object, const char* key)
{
    const auto member = object.find(key);
    return member == object.end() || !member->is_number_unsigned() ? 0
                                                                   : member->get<std::uint64_t>();
}

/// The member if it is an object; else an empty object.
FaultObject faultObject(const FaultObject& object, const char* key)
{
    const auto member = object.find(key);
    return member == object.end() || !member->is_object() ? FaultObject::object() : *member;
}

TextPlace placeIn(const FaultObject& object)
{
    return {faultNumber(object, "line"), faultNumber(object, "column")};
}

FaultParts partsIn(const FaultObject& object)
{
    FaultParts parts;
    for (const auto& [key, member] : kTexts)
        parts.*member = faultText(object, key);
    parts.what = faultText(object, "what");
    const FaultObject file = faultObject(object, "file");
    parts.file = faultText(file, "path");
    parts.inFile = placeIn(file);
    parts.inJob = placeIn(faultObject(object, "job"));
    parts.record = faultNumber(object, "record");
    parts.group = faultNumber(object, "group");
    parts.series = faultTexts(object, "series");
    if (const auto limit = object.find("limit");
        limit != object.end() && limit->is_number_integer())
        parts.limit = limit->get<std::int64_t>();
    if (const auto flag = object.find("hasSuggestion"); flag != object.end())
        parts.hasSuggestion = flag->is_boolean() && flag->get<bool>();
    return parts;
}

} // namespace

std::string jsonOf(const Fault& fault)
{
    FaultObject object = {{"id", fault.id()}};
    addParts(object, fault.parts());
    if (!fault.detail().empty())
        object["detail"] = fault.detail();
    return dumped(object);
}

std::string jsonOf(const std::string& id, const FaultParts& parts)
{
    FaultObject object = {{"id", id}};
    addParts(object, parts);
    return dumped(object);
}

std::string jsonOf(const FaultParts& parts)
{
    FaultObject object = FaultObject::object();
    addParts(object, parts);
    return dumped(object);
}

std::optional<FaultReport> faultReportIn(const std::string& text)
{
    if (base::excessOf(text, kMostOfFault))
        return std::nullopt;
    const FaultObject object = FaultObject::parse(text, nullptr, false);
    if (!object.is_object())
        return std::nullopt;
    return FaultReport{faultText(object, "id"), partsIn(object), faultText(object, "detail")};
}

} // namespace datafile
