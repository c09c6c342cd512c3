#include "hvhost/map/MapInfo.h"

#include <iostream>
#include <sstream>

#include <nlohmann/json.hpp>

#include "CFMetaData.h"
#include "FileServices.h"
#include "geo/HVInteractiveSTEM.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/map/MapFields.h"
#include "hvhost/map/MapPage.h"
#include "hvhost/map/MapSession.h"
#include "hvhost/show/OutputShown.h"
#include "hvhost/show/ResultTable.h"
#include "hvhost/show/ResultWords.h"
#include "hvhost/show/ShownResult.h"
#include "hvhost/show/TextTable.h"
#include "runner/HVRunner.h"
#include "support/HVSimpleFile.h"
#include "support/Paths.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr int kMapSchema = 1;

std::string dumped(const Json& document)
{
    return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

// The layers of a service.

ResultTable layerTable(const std::vector<HVRunner::LayerInfo>& layers)
{
    ResultTable table;
    table.keyCount = 1;
    table.columns = {{"layer", CFField::Integer}, {"name"}, {"shapes"}, {"keys"}};
    for (const HVRunner::LayerInfo& layer : layers)
        table.rows.push_back({std::to_string(layer.id), layer.name, layer.features, layer.keys});
    return table;
}

Json jsonOf(const std::vector<HVRunner::LayerInfo>& layers, const std::string& name)
{
    Json document{{"schema", kMapSchema}, {"service", name}, {"layers", Json::array()}};
    for (const HVRunner::LayerInfo& layer : layers)
        document["layers"].push_back({{"id", layer.id},
                                      {"name", layer.name},
                                      {"shapes", layer.features},
                                      {"keys", layer.keys},
                                      {"description", layer.description},
                                      {"subLayers", layer.subLayers}});
    return document;
}

/// An empty answer means that an error occurred.
std::string shownLayers(MapSession& session, const MapInput& map, const TableLook& look)
{
    std::string answer;
    const auto ask = [&](HVInteractiveSTEM& maps) {
        return maps.validateMapService(map.location(), answer);
    };
    session.perform(ask, map.name(), map.origin());
    std::vector<HVRunner::LayerInfo> layers;
    if (answer.empty())
        session.checkStop();
    if (!HVRunner::ParseMapServiceLayers(answer, layers))
        throw CommandFault(ExitStatus::Input, map.name() + ": no map service answers",
                           "the address of a feature service ends in /FeatureServer");
    if (look.form == "json")
        return dumped(jsonOf(layers, map.name()));
    std::ostringstream out;
    if (look.form == "text")
        out << map.name() << ": "
            << counted(static_cast<double>(layers.size()), "^1 layer", "^1 layers") << '\n';
    printTable(look.form == "text" ? inWords(layerTable(layers)) : layerTable(layers), look, out);
    return out.str();
}

// The fields of a source.

/// The first geospatial field, or null.
const CFField* shapesOf(const CFMetaData& model)
{
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        if (model.GetField(i)->GetGeo() != nullptr)
            return model.GetField(i);
    return nullptr;
}

/// Geospatial fields are shown with their kind of shape instead of String.
ResultTable fieldTable(const CFMetaData& model)
{
    ResultTable table;
    table.keyCount = 1;
    table.columns = {
        {"field"}, {.name = "type", .hasWords = true}, {.name = "measure", .hasWords = true}};
    for (std::size_t i = 0; i < model.FieldCount(); ++i) {
        const CFField& field = *model.GetField(i);
        const bool isShape = field.GetGeo() != nullptr;
        table.rows.push_back(
            {field.GetName(),
             isShape ? WordOf(field.GetGeo()->GetType()) : WordOf(field.GetStorage()),
             WordOf(field.GetType())});
    }
    return table;
}

/// For example "WGS 84 (4326), geographic".
std::string systemOf(const CFGeo& geo)
{
    if (geo.GetCsname().empty() && geo.GetWkid() <= 0)
        return word("unknown");
    std::string text = geo.GetCsname();
    if (geo.GetWkid() > 0)
        text += " (" + std::to_string(geo.GetWkid()) + ")";
    return text + ", " + word(geo.IsProjected() ? "projected" : "geographic");
}

std::string shapesText(const CFField& field)
{
    const CFGeo& geo = *field.GetGeo();
    std::string text =
        sentence("shapes: ^1 in the field ^2", {WordOf(geo.GetType()), field.GetName()}) + "\n" +
        sentence("coordinate system: ^1", {systemOf(geo)}) + "\n";
    if (const auto& extent = geo.GetEnvelope())
        text += sentence("extent: ^1 to ^2, ^3 to ^4",
                         {localNumber(extent->leftUpperX), localNumber(extent->rightLowerX),
                          localNumber(extent->rightLowerY), localNumber(extent->leftUpperY)}) +
                "\n";
    return text;
}

Json jsonOf(const CFField& shapes)
{
    const CFGeo& geo = *shapes.GetGeo();
    Json json{{"field", shapes.GetName()},
              {"type", WordOf(geo.GetType())},
              {"coordinates", geo.GetCoordinates()}};
    if (geo.GetWkid() > 0 || !geo.GetCsname().empty() || !geo.GetWkt().empty())
        json["system"] = {{"wkid", geo.GetWkid()},
                          {"name", geo.GetCsname()},
                          {"projected", geo.IsProjected()},
                          {"wkt", geo.GetWkt()}};
    if (const auto& extent = geo.GetEnvelope())
        json["extent"] = {{"left", extent->leftUpperX},
                          {"upper", extent->leftUpperY},
                          {"right", extent->rightLowerX},
                          {"lower", extent->rightLowerY}};
    return json;
}

Json jsonOf(const CFMetaData& model, const std::string& name)
{
    Json document{{"schema", kMapSchema}, {"source", name}};
    if (const CFField* const shapes = shapesOf(model))
        document["shapes"] = jsonOf(*shapes);
    document["fields"] = Json::array();
    for (std::size_t i = 0; i < model.FieldCount(); ++i) {
        const CFField& field = *model.GetField(i);
        document["fields"].push_back({{"name", field.GetName()},
                                      {"type", WordOf(field.GetStorage())},
                                      {"measure", WordOf(field.GetType())}});
    }
    return document;
}

std::string shownFields(const std::string& xml, const std::string& name, const TableLook& look)
{
    const CFMetaData model(xml);
    if (look.form == "json")
        return dumped(jsonOf(model, name));
    std::ostringstream out;
    if (look.form == "text") {
        out << name << ": " << sentence("^1 fields", {std::to_string(model.FieldCount())}) << '\n';
        if (const CFField* const shapes = shapesOf(model))
            out << shapesText(*shapes);
    }
    printTable(look.form == "text" ? inWords(fieldTable(model)) : fieldTable(model), look, out);
    return out.str();
}

/// The shapes as GeoJSON, in their own system; empty for a source without shapes.
std::string geoJsonOf(MapSession& session, const MapInput& map, const CFMetaData& model)
{
    if (shapesOf(model) == nullptr)
        return {};
    const HVSimpleFile shapes("map.geojson", false, true);
    const HVSimpleFile fields("map.xml", false, true);
    const std::string path = nativePath(shapes.GetGenericPath());
    const std::string modelPath = nativePath(fields.GetGenericPath());
    session.perform(
        [&](HVInteractiveSTEM& maps) {
            return map.isService()
                       ? maps.getServiceGeoJSON("", 0, "", 0, map.location(), *map.layer(),
                                                modelPath, path)
                       : maps.getShapeGeoJSON("", 0, "", 0, map.location(), modelPath, path);
        },
        map.name(), map.origin());
    std::string text;
    if (!FetchFile::fetch(shapes.GetGenericPath(), text))
        throw CommandFault(ExitStatus::JobFailed, map.name() + ": its shapes cannot be read back");
    return text;
}

void showPage(MapSession& session, const MapInput& map, const std::string& xml,
              const ShownResult& result)
{
    const CFMetaData model(xml);
    const CFField* const shapes = shapesOf(model);
    const auto output =
        mapOutput(session.host(), {map.name(), fieldTable(model), shapes ? shapesText(*shapes) : "",
                                   geoJsonOf(session, map, model)});
    result.deliver([&](std::ostream& out) {
        writeOutput(*output, {"html", result.isFile()}, out);
    });
}

} // namespace

void mapInfo(const MapInfoOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const ShownOptions& shown = options.shown;
    const ShownResult result(shown.output, shown.force, watch);
    const std::string format = formOf(shown.format, shown.output, {"csv", "json", "html"});
    const TableLook look{format, textForm(shown.text, format, result.isFile())};
    const bool isPage = format == "html" && !options.showDataModel;
    const MapInput map(options.map, options.showDataModel || isPage);
    MapSession session("info", common, watch);
    if (map.isService() && !map.layer())
        result.deliver(shownLayers(session, map, look));
    else if (const std::string model = mapDataModel(session, map); isPage)
        showPage(session, map, model, result);
    else
        result.deliver(options.showDataModel ? model : shownFields(model, map.name(), look));
    session.host().finish();
}
