#include "report/maps/MapMarkup.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <ostream>

#include "Translation.h"
#include "report/document/PageText.h"
#include "report/maps/MapLegend.h"
#include "report/maps/MapNotes.h"
#include "report/maps/MapPath.h"
#include "report/maps/MapTables.h"
#include "report/maps/MapTitle.h"

namespace {

constexpr double kDotRadius = 4 * kUnitsPerPixel;

/// A layer with everything that is drawn.
struct DrawnLayer
{
    const MapLayer& layer;
    MapItems data;
    std::optional<MapClasses> classes;
    std::size_t first = 0; ///< index of its shapes among those of the map
    double largest = 0;

    DrawnLayer(const MapLayer& of, MapSources& sources, std::size_t at)
        : layer(of), data(itemsOf(of, sources)), first(at)
    {
        if (layer.colour)
            classes.emplace(*layer.colour, data.items);
        for (const MapItem& item : data.items)
            largest = std::max(largest, item.size);
    }
    bool hasNone() const
    {
        return layer.colour &&
               std::ranges::any_of(data.items, [](const MapItem& item) { return !item.colour; });
    }
};

/// Writes one map, layer by layer.
class MapWriter
{
public:
    MapWriter(std::ostream& out, const MapSpec& spec, MapSources& sources, const MapName& name);
    void write();

private:
    void writeDrawing();
    void writeHatch();
    void writeLayer(const DrawnLayer& drawn);
    void writeItem(const DrawnLayer& drawn, std::size_t at);
    void writePoint(const MapPoint& point, double radius);
    void writeShape(const MapShape& shape, bool isHatched);
    void writeLegends();
    std::string hatch() const { return _name.anchor + "-hatch"; }

    std::ostream& _out;
    const MapName& _name;
    std::vector<DrawnLayer> _layers;
    std::vector<MapShape> _shapes;
    MapFrame _frame;
};

MapWriter::MapWriter(std::ostream& out, const MapSpec& spec, MapSources& sources,
                     const MapName& name)
    : _out(out), _name(name)
{
    double margin = 2 * kUnitsPerPixel;
    for (const MapLayer& layer : spec.layers) {
        DrawnLayer& drawn = _layers.emplace_back(layer, sources, _shapes.size());
        std::ranges::move(drawn.data.shapes, std::back_inserter(_shapes));
        if (layer.isOfPoints())
            margin = std::max(margin, layer.size ? radiusOf(1, 1) + margin : 2 * kDotRadius);
    }
    _frame = layOut(_shapes, spec.projection, margin);
}

void MapWriter::write()
{
    if (_shapes.empty()) {
        _out << "<p class=\"message level2\" role=\"note\">"
             << escaped(translate("What this was to show cannot be read.")) << "</p>\n";
    } else {
        _out << "<div class=\"map\">\n";
        writeDrawing();
        writeLegends();
        _out << "</div>\n";
    }
    for (const DrawnLayer& drawn : _layers)
        writeMapNotes(_out, drawn.data);
}

void MapWriter::writeDrawing()
{
    _out << "<svg width=\"" << std::lround(_frame.width / kUnitsPerPixel) << "\" height=\""
         << std::lround(_frame.height / kUnitsPerPixel) << "\" viewBox=\"0 0 "
         << std::lround(_frame.width) << " " << std::lround(_frame.height)
         << "\" role=\"graphics-document\" aria-label=\"" << escaped(shortened(_name.title));
    if (!_name.description.empty())
        _out << ". " << escaped(shortened(_name.description));
    _out << "\">\n";
    if (std::ranges::any_of(_layers, &DrawnLayer::hasNone))
        writeHatch();
    for (const DrawnLayer& drawn : _layers)
        writeLayer(drawn);
    _out << "</svg>\n";
}

void MapWriter::writeHatch()
{
    _out << "<defs><pattern id=\"" << hatch()
         << "\" class=\"hatch\" width=\"50\" height=\"50\" patternUnits=\"userSpaceOnUse\" "
            "patternTransform=\"rotate(45)\"><path d=\"M0 0V50\"/></pattern></defs>\n";
}

/// Large points first, so that they do not cover small ones.
void MapWriter::writeLayer(const DrawnLayer& drawn)
{
    std::vector<std::size_t> order(drawn.data.items.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, std::greater(),
                             [&](std::size_t at) { return drawn.data.items[at].size; });
    for (const std::size_t at : order)
        writeItem(drawn, at);
}

void MapWriter::writeItem(const DrawnLayer& drawn, std::size_t at)
{
    const MapItem& item = drawn.data.items[at];
    const MapShape& shape = _shapes[drawn.first + at];
    const bool isOfPoints = drawn.layer.isOfPoints();
    const MapClass plain{{}, drawn.layer.colour ? kNoneLook : isOfPoints ? kDotLook : kLandLook};
    _out << "<g " << lookOf(item.colour ? drawn.classes->classOf(*item.colour) : plain);
    if (const std::string title = titleOf(item, drawn.layer); !title.empty())
        _out << " role=\"graphics-symbol\"><title>" << escaped(title) << "</title>";
    else
        _out << ">";
    if (isOfPoints)
        writePoint(shape.spots.front(),
                   drawn.layer.size ? radiusOf(item.size, drawn.largest) : kDotRadius);
    else
        writeShape(shape, drawn.layer.colour && !item.colour);
    _out << "</g>\n";
}

void MapWriter::writePoint(const MapPoint& point, double radius)
{
    _out << "<circle cx=\"" << std::lround(point.x) << "\" cy=\"" << std::lround(point.y)
         << "\" r=\"" << std::lround(radius) << "\"/>";
}

void MapWriter::writeShape(const MapShape& shape, bool isHatched)
{
    if (!shape.rings.empty())
        _out << "<path" << (isHatched ? " fill=\"url(#" + hatch() + ")\"" : "") << " d=\""
             << areaPath(shape.rings) << "\"/>";
    if (!shape.lines.empty())
        _out << "<path class=\"line\" d=\"" << linePath(shape.lines) << "\"/>";
    if (!shape.spots.empty())
        _out << "<path class=\"spot\" d=\"" << spotPath(shape.spots) << "\"/>";
}

void MapWriter::writeLegends()
{
    _out << "<div class=\"legends\">\n";
    for (const DrawnLayer& drawn : _layers) {
        if (drawn.classes)
            writeColours(_out, *drawn.layer.colour, *drawn.classes,
                         {drawn.layer.isOfPoints(), hatch()}, drawn.hasNone());
        if (drawn.layer.size && drawn.largest > 0)
            writeSizes(_out, *drawn.layer.size, drawn.largest);
    }
    _out << "</div>\n";
}

} // namespace

void writeMap(std::ostream& out, const MapSpec& spec, const OutputDocument& document,
              const MapName& name)
{
    MapSources sources(document);
    MapWriter(out, spec, sources, name).write();
    out << "<details><summary>" << escaped(translate("Data")) << "</summary>\n";
    writeMapTables(out, spec, sources, name.title);
    out << "</details>\n";
}
