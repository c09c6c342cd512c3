#include "hvhost/map/MapPage.h"

#include <filesystem>
#include <string_view>

#include <nlohmann/json.hpp>

#include "TnOutput.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/show/DocumentItems.h"
#include "hvhost/show/Rendering.h"
#include "hvhost/show/ResultWords.h"

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kMapName = "map";

/// The first column has the names of the rows.
Json tableOf(const ResultTable& table)
{
    Json rows = dimensionItem("", "row", false);
    rows.update(plainItem(table.columns.front().name));
    Json columns = dimensionItem("Fields", "column", true);
    for (std::size_t at = 1; at < table.columns.size(); ++at)
        columns["children"].push_back(plainItem(table.columns[at].name));
    Json labels = Json::array();
    Json cells = Json::array();
    for (const ResultTable::Row& row : table.rows) {
        rows["children"].push_back(plainItem(row.front().value_or("")));
        for (std::size_t at = 1; at < row.size(); ++at) {
            cells.push_back(std::to_string(labels.size()));
            labels.push_back(row[at].value_or(""));
        }
    }
    return {{"tableId", "map.fields"},
            {"title", Json::object()},
            {"dimensions", {rows, columns}},
            {"cellLabels", {{"values", labels}}},
            {"cells", {{{"cells", {{"compactCells", {{"value", cells}}}}}}}}};
}

/// The path of a property. Any name is one property.
std::string pathOf(const std::string& property)
{
    constexpr std::string_view kMarked = ".[]'\"\\";
    std::string path = "properties.";
    for (const char c : property) {
        if (kMarked.find(c) != std::string_view::npos)
            path += '\\';
        path += c;
    }
    return path;
}

Json chartOf(const ResultTable& table)
{
    Json tips = Json::array();
    for (const ResultTable::Row& row : table.rows) {
        const std::string name = row.front().value_or("");
        tips.push_back({{"field", pathOf(name)}, {"title", name}});
    }
    return {{"parameters", {{{"externalSource", kMapName}}}},
            {"data", {{"name", kMapName}}},
            {"mark", "geoshape"},
            {"encoding", {{"tooltip", tips}}}};
}

RenderOrder orderOf(const MapFacts& facts)
{
    RenderOrder order;
    order.result = kMapName;
    order.geoJson = {{kMapName, facts.geoJson}};
    if (!facts.geoJson.empty())
        order.objects.emplace_back()
            .order.setType(OutputOrder::MapChart)
            .setOutlineTitle("Map", true)
            .addLocation("chart");
    order.objects.emplace_back()
        .order.setOutlineTitle("Fields", true)
        .addTextToCaption(facts.remarks)
        .addLocation("fields");
    return order;
}

} // namespace

std::shared_ptr<const OutputHeading> mapOutput(HostSession& session, const MapFacts& facts)
{
    const std::string document =
        Json{{kMapName,
              {{"chart", chartOf(facts.fields)}, {"fields", tableOf(inWords(facts.fields))}}}}
            .dump(-1, ' ', false, Json::error_handler_t::replace);
    TnProcedure procedure(std::filesystem::path(facts.name).filename().string());
    Rendering(session, procedure, facts.name, document).render(orderOf(facts));
    return procedure.node();
}
