#include "report/maps/MapData.h"

#include <unordered_map>
#include <unordered_set>

#include "report/maps/FieldPath.h"

namespace {

/// The common form of a key on both sides.
std::string keyOf(const PageJson& record, const std::string& field)
{
    const PageJson* value = valueAt(record, field);
    return value && !value->is_structured() ? scalarText(*value) : std::string();
}

/// Records by key; the first one of a key counts.
std::unordered_map<std::string, const PageJson*> indexOf(const PageJson& rows,
                                                         const std::string& field)
{
    std::unordered_map<std::string, const PageJson*> index;
    for (const PageJson& row : rows)
        if (std::string key = keyOf(row, field); !key.empty())
            index.emplace(std::move(key), &row);
    return index;
}

std::optional<MapShape> shapeOf(const PageJson& feature)
{
    const PageJson* geometry = memberOf(feature, "geometry");
    return readShape(geometry ? *geometry : feature);
}

std::optional<MapShape> placeOf(const PageJson& record, const MapLayer& layer)
{
    const PageJson* longitude = valueAt(record, layer.longitude);
    const PageJson* latitude = valueAt(record, layer.latitude);
    if (!longitude || !latitude)
        return std::nullopt;
    return readShape({{"type", "Point"}, {"coordinates", {*longitude, *latitude}}});
}

/// Only a number, if the classes are parts of a scale.
const PageJson* colourOf(const MapItem& item, const MapLayer& layer)
{
    const PageJson* value = layer.colour ? valueOf(item, layer, layer.colour->field) : nullptr;
    const bool takesWords = layer.colour && (layer.colour->scale == MapChannel::Scale::Grades ||
                                             layer.colour->scale == MapChannel::Scale::Categories);
    const bool fits = value && (takesWords ? !value->is_structured() : value->is_number());
    return fits ? value : nullptr;
}

void add(MapItems& items, MapItem item, std::optional<MapShape> shape, const MapLayer& layer)
{
    if (!shape) {
        ++items.withoutShape;
        return;
    }
    item.colour = colourOf(item, layer);
    if (const PageJson* size = layer.size ? valueOf(item, layer, layer.size->field) : nullptr)
        item.size = size->is_number() ? size->get<double>() : 0;
    items.items.push_back(item);
    items.shapes.push_back(std::move(*shape));
}

void addPoints(MapItems& items, const MapLayer& layer, const PageJson& records)
{
    for (const PageJson& record : records)
        add(items, {&record, &record}, placeOf(record, layer), layer);
}

void addAreas(MapItems& items, const MapLayer& layer, const PageJson& features)
{
    for (const PageJson& feature : features)
        add(items, {&feature, &feature}, shapeOf(feature), layer);
}

void addJoined(MapItems& items, const MapLayer& layer, const PageJson& features,
               const PageJson& rows)
{
    const auto index = indexOf(rows, layer.join->rowKey);
    std::unordered_set<std::string> placed;
    for (const PageJson& feature : features) {
        std::string key = keyOf(feature, layer.join->featureKey);
        const auto row = index.find(key);
        add(items, {&feature, row == index.end() ? nullptr : row->second}, shapeOf(feature), layer);
        placed.insert(std::move(key));
    }
    for (const PageJson& row : rows)
        if (std::string key = keyOf(row, layer.join->rowKey);
            !key.empty() && placed.insert(key).second)
            items.unplaced.push_back(std::move(key));
}

const PageJson* valueOr(const PageJson* value, const PageJson* record, const std::string& field)
{
    return value || !record ? value : valueAt(*record, field);
}

} // namespace

const PageJson& MapSources::records(const MapSource& source)
{
    if (source.values)
        return *source.values;
    const auto [read, isNew] = _read.emplace(source.name, PageJson::array());
    for (const auto& [name, text] : _document.geoJson)
        if (isNew && name == source.name)
            if (const std::optional<PageJson> json = parseDocument(text);
                json && featuresOf(*json).is_array())
                read->second = featuresOf(*json);
    return read->second;
}

MapItems itemsOf(const MapLayer& layer, MapSources& sources)
{
    MapItems items;
    const PageJson& features = sources.records(layer.source);
    if (layer.isOfPoints())
        addPoints(items, layer, features);
    else if (layer.join)
        addJoined(items, layer, features, sources.records(layer.join->rows));
    else
        addAreas(items, layer, features);
    return items;
}

const PageJson* valueOf(const MapItem& item, const MapLayer& layer, const std::string& field)
{
    if (!layer.join)
        return valueAt(*item.feature, field);
    const PageJson* lead = layer.join->rowsLead ? item.row : item.feature;
    const PageJson* other = layer.join->rowsLead ? item.feature : item.row;
    for (const auto& [name, original] : layer.join->names)
        if (name == field)
            return valueOr(nullptr, other, original);
    if (const std::string whole = layer.join->whole + "."; field.starts_with(whole))
        return valueOr(nullptr, other, field.substr(whole.size()));
    return valueOr(valueOr(nullptr, lead, field), other, field);
}
