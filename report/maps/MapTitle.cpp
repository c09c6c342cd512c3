#include "report/maps/MapTitle.h"

#include <algorithm>

#include "Translation.h"
#include "report/document/PageText.h"
#include "report/maps/FieldPath.h"

namespace {

std::string shown(const PageJson* value)
{
    if (!value)
        return translate("No data");
    return value->is_number() ? roundedNumber(value->get<double>()) : scalarText(*value);
}

std::string lineOf(const std::string& title, const PageJson* value)
{
    return title + ": " + shown(value);
}

/// A member called "name", or otherwise the first text.
const PageJson* nameIn(const PageJson& record)
{
    for (const char* name : {"name", "NAME", "Name"})
        if (const PageJson* value = valueAt(record, name))
            return value;
    const auto text = std::ranges::find_if(record, [](const PageJson& v) { return v.is_string(); });
    return record.is_object() && text != record.end() ? &*text : nullptr;
}

std::string nameOf(const MapItem& item, const MapLayer& layer)
{
    const PageJson* name = layer.join ? valueAt(*item.feature, layer.join->featureKey) : nullptr;
    const PageJson* properties = memberOf(*item.feature, "properties");
    if (!name)
        name = nameIn(properties ? *properties : *item.feature);
    if (!name)
        name = valueAt(*item.feature, "id");
    return name && !name->is_structured() ? scalarText(*name) : std::string();
}

} // namespace

std::string titleOf(const MapItem& item, const MapLayer& layer)
{
    std::vector<std::string> lines;
    for (const auto& [field, title] : layer.tips)
        if (const PageJson* value = valueOf(item, layer, field); value && !value->is_structured())
            lines.push_back(lineOf(title, value));
    if (lines.empty())
        lines.push_back(nameOf(item, layer));
    if (layer.colour && (layer.tips.empty() || !item.colour))
        lines.push_back(lineOf(layer.colour->title, item.colour));
    if (layer.size && layer.tips.empty())
        lines.push_back(lineOf(layer.size->title, valueOf(item, layer, layer.size->field)));
    std::string text;
    for (const std::string& line : lines)
        text += (text.empty() ? "" : "\n") + shortened(line);
    return text;
}
