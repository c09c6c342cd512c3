#include "report/maps/MapSpec.h"

#include <algorithm>

#include "report/maps/MapChannelSpec.h"
#include "report/maps/MapSpecFault.h"

namespace {

/// Reads views one after the other, each on top of the previous one.
class SpecReader
{
public:
    SpecReader(const PageJson& specification, const OutputDocument& document)
        : _top(specification), _document(document)
    {
    }
    MapSpec read();

private:
    void readView(const PageJson& view);
    void readAreas(MapLayer& layer, const PageJson& view, const PageJson& encoding) const;
    void readPoints(MapLayer& layer, const PageJson& view, const PageJson& encoding) const;
    static void readLooks(MapLayer& layer, const PageJson& encoding);
    void readProjection(const PageJson& projection);
    MapSource sourceOf(const PageJson* data) const;
    MapJoin joinOf(const MapSource& source, const PageJson& lookup) const;
    PageJson encodingOf(const PageJson& view) const;
    bool isOfFeatures(const MapSource& source) const;
    const PageJson* dataOf(const PageJson& view) const;
    const PageJson* transformOf(const PageJson& view) const;

    const PageJson& _top;
    const OutputDocument& _document;
    MapSpec _spec;
};

/// The data of a view: its own, or those of the whole.
const PageJson* SpecReader::dataOf(const PageJson& view) const
{
    const PageJson* own = memberOf(view, "data");
    return own ? own : memberOf(_top, "data");
}

/// The only transformation between data and view, or null. A transformation of the
/// whole's data is not applied to the view's own data.
const PageJson* SpecReader::transformOf(const PageJson& view) const
{
    const PageJson* transform = nullptr;
    for (const PageJson* part : {&_top, &view}) {
        const PageJson* steps = memberOf(*part, "transform");
        if (!steps || (part != &view && memberOf(view, "data")))
            continue;
        requireMap(steps->is_array() && steps->size() <= 1 && (!transform || transform == steps));
        transform = steps;
    }
    return transform && !transform->empty() ? &transform->front() : nullptr;
}

PageJson SpecReader::encodingOf(const PageJson& view) const
{
    PageJson encoding = PageJson::object();
    for (const PageJson* part : {&_top, &view})
        if (const PageJson* channels = memberOf(*part, "encoding"))
            for (const auto& [name, channel] : channels->items())
                encoding[name] = channel;
    return encoding;
}

MapSource SpecReader::sourceOf(const PageJson* data) const
{
    requireMap(data && data->is_object());
    requireOnly(*data, {"values", "name", "format"});
    const PageJson* values = memberOf(*data, "values");
    const std::string name = wordOf(memberOf(*data, "name"));
    if (const PageJson* sets = memberOf(_top, "datasets"); sets && !values)
        values = memberOf(*sets, name);
    if (const PageJson* features = values ? memberOf(*values, "features") : nullptr)
        values = features;
    const auto isNamed = [&](const auto& source) { return source.first == name; };
    requireMap(values ? values->is_array() : std::ranges::any_of(_document.geoJson, isNamed));
    if (const PageJson* format = memberOf(*data, "format"))
        requireMap(wordOf(memberOf(*format, "type")) != "topojson");
    return {values, name};
}

bool SpecReader::isOfFeatures(const MapSource& source) const
{
    return !source.values ||
           (!source.values->empty() && memberOf(source.values->front(), "geometry"));
}

MapJoin SpecReader::joinOf(const MapSource& source, const PageJson& lookup) const
{
    const PageJson* from = memberOf(lookup, "from");
    requireMap(from && memberOf(lookup, "lookup"));
    requireOnly(lookup, {"lookup", "from", "as", "default"});
    const std::string key = wordOf(memberOf(lookup, "lookup"));
    const std::string otherKey = wordOf(memberOf(*from, "key"));
    requireMap(!key.empty() && !otherKey.empty());
    const MapSource other = sourceOf(memberOf(*from, "data"));
    MapJoin join;
    join.rowsLead = !isOfFeatures(source);
    requireMap(join.rowsLead == isOfFeatures(other));
    join.rows = join.rowsLead ? source : other;
    join.rowKey = join.rowsLead ? key : otherKey;
    join.featureKey = join.rowsLead ? otherKey : key;
    const std::vector<std::string> fields = wordsOf(memberOf(*from, "fields"));
    const std::vector<std::string> names = wordsOf(memberOf(lookup, "as"));
    if (fields.empty() && names.size() == 1)
        join.whole = names.front();
    for (std::size_t at = 0; at < std::min(fields.size(), names.size()); ++at)
        join.names.emplace_back(names[at], fields[at]);
    return join;
}

void SpecReader::readAreas(MapLayer& layer, const PageJson& view, const PageJson& encoding) const
{
    const MapSource source = sourceOf(dataOf(view));
    layer.source = source;
    if (const PageJson* lookup = transformOf(view)) {
        layer.join = joinOf(source, *lookup);
        if (layer.join->rowsLead)
            layer.source = sourceOf(memberOf(*memberOf(*lookup, "from"), "data"));
    }
    requireMap(isOfFeatures(layer.source));
    requireMap(!memberOf(encoding, "longitude") && !memberOf(encoding, "latitude"));
}

void SpecReader::readPoints(MapLayer& layer, const PageJson& view, const PageJson& encoding) const
{
    requireMap(!transformOf(view));
    layer.source = sourceOf(dataOf(view));
    layer.longitude = fieldOf(memberOf(encoding, "longitude"));
    layer.latitude = fieldOf(memberOf(encoding, "latitude"));
    requireMap(!layer.longitude.empty() && !layer.latitude.empty());
    if (const PageJson* size = memberOf(encoding, "size"); size && memberOf(*size, "field"))
        layer.size = readChannel(*size);
}

void SpecReader::readView(const PageJson& view)
{
    const PageJson* mark = memberOf(view, "mark");
    requireMap(mark);
    const std::string kind = wordOf(mark->is_object() ? memberOf(*mark, "type") : mark);
    const PageJson encoding = encodingOf(view);
    const bool isOfAreas = kind == "geoshape";
    requireMap(isOfAreas || kind == "circle" || kind == "point");
    requireChannels(encoding, isOfAreas);
    MapLayer layer;
    if (isOfAreas)
        readAreas(layer, view, encoding);
    else
        readPoints(layer, view, encoding);
    readLooks(layer, encoding);
    if (const PageJson* projection = memberOf(view, "projection"))
        readProjection(*projection);
    _spec.layers.push_back(std::move(layer));
}

void SpecReader::readLooks(MapLayer& layer, const PageJson& encoding)
{
    for (const char* name : {"color", "fill"})
        if (const PageJson* colour = memberOf(encoding, name); colour && memberOf(*colour, "field"))
            layer.colour = readChannel(*colour);
    layer.tips = tipsOf(memberOf(encoding, "tooltip"));
}

/// Refuses rotated or clipped projections.
void SpecReader::readProjection(const PageJson& projection)
{
    requireOnly(projection, {"type", "reflectY"});
    const std::string type = wordOf(memberOf(projection, "type"));
    requireMap(type == "equirectangular" || type == "mercator" || type == "identity");
    _spec.projection = type == "mercator"   ? MapProjection::Mercator
                       : type == "identity" ? MapProjection::Plane
                                            : MapProjection::Equirectangular;
}

MapSpec SpecReader::read()
{
    requireOnly(_top, {"$schema",  "title",      "description", "name",       "width",
                       "height",   "background", "padding",     "autosize",   "config",
                       "usermeta", "view",       "parameters",  "data",       "datasets",
                       "mark",     "encoding",   "transform",   "projection", "layer"});
    if (const PageJson* projection = memberOf(_top, "projection"))
        readProjection(*projection);
    const PageJson* layers = memberOf(_top, "layer");
    if (!layers) {
        readView(_top);
        return _spec;
    }
    requireMap(layers->is_array() && !layers->empty());
    for (const PageJson& view : *layers) {
        requireOnly(view, {"name", "title", "description", "data", "mark", "encoding", "transform",
                           "projection"});
        readView(view);
    }
    return _spec;
}

} // namespace

std::optional<MapSpec> readMapSpec(const PageJson& specification, const OutputDocument& document)
{
    try {
        return SpecReader(specification, document).read();
    } catch (const MapSpecFault&) {
        return std::nullopt;
    }
}
