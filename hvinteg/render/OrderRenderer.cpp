#include "render/OrderRenderer.h"

#include "bridge/JsonImage.h"
#include "render/HostString.h"
#include "render/JsonEnvelope.h"
#include "render/jsonPivot.h"
#include "support/DottedPath.h"
#include "support/Transcoding.h"

namespace {
std::string joined(const std::vector<std::string>& segments)
{
    std::string path;
    for (const std::string& segment : segments)
        path += "." + segment;
    return path.empty() ? path : path.substr(1);
}
} // namespace

bool OrderRenderer::render(const OutputOrder& order)
{
    TnHeading* heading = _context.procedure;
    if (heading == nullptr)
        return false;
    Headings headings;
    for (const std::string& segment : segmentsOf(order.getTitle())) {
        // Headings remain even if the order fails: later orders may use them.
        headings.emplace_back(heading->Heading(hostString(segment, true)));
        heading = headings.back().get();
    }
    return renderUnder(*heading, order);
}

/// Returns whether a table or chart was shown. Views do not count, because they are also shown
/// without a result.
bool OrderRenderer::renderUnder(TnHeading& heading, const OutputOrder& order)
{
    if (order.getLocations().empty())
        return false;
    if (order.getType() == OutputOrder::Interactive) {
        renderView(heading, order);
        return false;
    }
    const auto item = _context.reader.follow(_result, order.getLocations().front());
    if (item.object == nullptr)
        return false;
    switch (order.getType()) {
    case OutputOrder::Pivot:
        renderTable(heading, order, item.object);
        return true;
    case OutputOrder::Chart:
    case OutputOrder::MapChart:
        renderChart(heading, order, item.object);
        return true;
    default:
        return false;
    }
}

void OrderRenderer::renderTable(TnHeading& heading, const OutputOrder& order, jobject item)
{
    jsonPivot pivot(_context.document, item, _context.source, _context.dictionary);
    pivot.setCaption(order.getCaption());
    pivot.hideCategories(order.getHiddenRows(), true);
    pivot.hideAllCategoriesExcept(order.getShownRows(), true);
    pivot.hideCategories(order.getHiddenCols(), false);
    pivot.hideAllCategoriesExcept(order.getShownCols(), false);
    pivot.createPivotTable(&heading, order.getOutlineTitle(), order.translateTitle(),
                           order.getOMSSubType());
    _context.hasLostText = _context.hasLostText || pivot.hasLostText();
}

void OrderRenderer::renderChart(TnHeading& heading, const OutputOrder& order, jobject item)
{
    const std::string json = _context.reader.jsonOf(item);
    if (json.empty())
        return;
    xGlyph chart(heading);
    describe(chart, order);
    JsonEnvelope envelope;
    envelope.add(0, _context.dataModelJson());
    envelope.add(1, json);
    chart.setViZJSONTemplate(envelope.text());
    chart.setOptions(order.getOptions());
    // Before the chart is sent: it ignores later additions.
    if (order.getType() == OutputOrder::MapChart)
        addMapSources(chart, item);
    chart.sendChart();
}

/// Adds only the texts that the chart names; others may be as large as a map of the world.
void OrderRenderer::addMapSources(xGlyph& chart, jobject item)
{
    const LocalRef<> parameters = _context.reader.get(item, "parameters");
    const JsonImage image = JsonImage::of(_context.reader.reader(), parameters.get());
    const JsonValue list = image.root();
    for (const JsonValue parameter : list) {
        const auto source = _context.geoJSON.find(std::string(parameter["externalSource"].text()));
        if (source != _context.geoJSON.end() && !source->first.empty())
            chart.addGeoJSON(source->first, source->second);
    }
}

void OrderRenderer::renderView(TnHeading& heading, const OutputOrder& order)
{
    xInteractive view(heading);
    describe(view, order);
    view.setProcedureName(_context.path);
    const std::string& pathId = order.getPathId();
    view.setJSONPath(pathId.empty() ? joined(order.getLocations().front()) : pathId);
    view.setOptions(order.getOptions());
    if (order.needsGEO())
        for (const auto& [name, text] : _context.geoJSON)
            view.addGeoJSON(name, text);
    view.setInteractiveJSON(viewJson(order));
    view.sendInteractive();
}

/// Locations are numbered from 1, even if one of them is empty.
std::string OrderRenderer::viewJson(const OutputOrder& order)
{
    JsonEnvelope envelope;
    if (_context.hasDocument) {
        envelope.add(0, _context.dataModelJson());
        std::size_t number = 0;
        for (const auto& location : order.getLocations())
            envelope.add(++number,
                         _context.reader.jsonOf(_context.reader.follow(_result, location).object));
    }
    return envelope.text();
}

void OrderRenderer::describe(XDocument& output, const OutputOrder& order) const
{
    ChartString title;
    if (order.translateTitle()) {
        // The string table is UTF-8; a chart's plain text is in the host's encoding.
        const std::string text = _context.strings.LookUp(order.getOutlineTitle());
        title.assign(transcodeFromUTF8(text.c_str(), nullptr).c_str());
    } else {
        title.assignUTF8(order.getOutlineTitle());
    }
    output.SetDescription(title);
}
