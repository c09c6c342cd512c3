// Writes pages of made-up output, for a browser to look at: page_samples KIND FILE.
#include <cmath>
#include <fstream>
#include <iostream>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ChartOutput.h"
#include "OutputTree.h"
#include "report/page/OutputPage.h"
#include "support/OutputParts.h"

namespace {

constexpr double kMissing = std::numeric_limits<double>::lowest();
const std::string kHostile = "</script><img src=x onerror=alert(1)>\"' & \xE2\x80\xA8" +
                             std::string("\0", 1) + "\x1B \xFF end";
const std::string kHebrew = "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D (1)";
const std::string kOverride = "\xE2\x80\xAEtxet desrever";

TnUTF8String words(const std::string& text)
{
    return TnUTF8String(text);
}

Table tableUnder(TnHeading& heading, const std::string& title)
{
    return Table(heading.PivotTable(words(title), words("Sample"), true));
}

double madeUp(int seed, double scale)
{
    return std::round(scale * (1.0 + std::sin(seed * 12.9898)) * 1e9) / 1e9;
}

void addStatistics(TnHeading& heading)
{
    const Table table = tableUnder(heading, "Descriptive Statistics");
    table->Note(note("Seattle, 2012 to 2015."));
    const Dimension rows = dimensionOf(*table, "Variable", TnDimension::Row);
    const Dimension columns = dimensionOf(*table, "Statistic", TnDimension::Column);
    columns->Position(TnDimension::Column, 1, true, false);
    const std::vector<std::string> variables = {"Precipitation", "Highest temperature",
                                                "Lowest temperature", "Wind"};
    const double figures[4][4] = {{1461, 0, 55.9, 3.0294318959616703},
                                  {1461, -1.6, 35.6, 16.439082819986310},
                                  {1461, -7.1, 18.3, 8.2347707049965780},
                                  {1461, 0.4, 9.5, 3.2411362080766600}};
    for (std::size_t row = 0; row < variables.size(); ++row) {
        rows->Category(words(variables[row]));
        columns->Category(words("N")).Cell(number(figures[row][0], kFormatNumber, 0));
        columns->Category(words("Minimum")).Cell(number(figures[row][1], kFormatGeneral, 1));
        columns->Category(words("Maximum")).Cell(number(figures[row][2], kFormatNumber, 1));
        columns->Category(words("Mean")).Cell(number(figures[row][3], kFormatNumber, 3));
    }
    columns->Category(words("Mean")).Note(note("Days without an observation are left out."));
    table->Caption(words("Temperatures in degrees Celsius, precipitation in millimetres."));
}

// Two row dimensions, one with groups, and two column dimensions.
void addCrossTable(TnHeading& heading)
{
    const Table table = tableUnder(heading, "Weather by Season and Year");
    const Dimension seasons = dimensionOf(*table, "Season", TnDimension::Row, 1);
    const Dimension kinds = dimensionOf(*table, "Weather", TnDimension::Row, 2);
    const Dimension years = dimensionOf(*table, "Year", TnDimension::Column, 1);
    const Dimension figures = dimensionOf(*table, "Statistics", TnDimension::Column, 2);
    table->CornerText(words("Days"));
    figures->Position(TnDimension::Column, 2, true, false);
    const Group dry(kinds->Group(words("Dry"), true, TnGroup::Unsorted));
    const Group wet(kinds->Group(words("Wet"), true, TnGroup::Unsorted));
    int seed = 0;
    const auto fill = [&](TnGroup& group, const std::string& kind) {
        group.Category(words(kind));
        for (const char* year : {"2012", "2013"}) {
            years->Category(words(year));
            TnCategory count = figures->Category(words("Count"));
            count.Cell(number(std::round(madeUp(++seed, 40)), kFormatNumber, 0));
            TnCategory percent = figures->Category(words("Percent"));
            percent.Cell(number(seed == 6 ? kMissing : madeUp(seed, 50), kFormatPercent, 1));
            if (seed == 6)
                percent.CellNote(note("Not computed: no day of this kind."));
        }
    };
    for (const char* season : {"Winter", "Summer"}) {
        seasons->Category(words(season));
        fill(*dry, "Sun");
        fill(*dry, "Fog");
        fill(*wet, "Drizzle");
        fill(*wet, "Rain");
        fill(*wet, "Snow");
        fill(*kinds, "Total");
    }
}

void addLayers(TnHeading& heading)
{
    const Table table = tableUnder(heading, "Means by Region");
    const Dimension layer = dimensionOf(*table, "Sex", TnDimension::Layer);
    const Dimension rows =
        dimensionOf(*table, "Region", TnDimension::Row, 1, TnPivotTable::Ascending);
    const Dimension columns = dimensionOf(*table, "Measure", TnDimension::Column);
    int seed = 0;
    for (const char* sex : {"female", "male"}) {
        layer->Category(words(sex));
        for (const char* region : {"West", "East", "North"}) {
            rows->Category(words(region));
            columns->Category(words("Income")).Cell(number(madeUp(++seed, 2e4), kFormatDollar, 0));
            columns->Category(words("Since"))
                .Cell(number(1.36e10 + seed * 1e8, kFormatDateYearFirst, 0));
            columns->Category(words("Remark")).Cell(words("first\\nsecond"));
        }
    }
}

void addChart(TnHeading& heading, const std::string& title, const std::string& specification,
              const std::string& geoJson = {})
{
    xGlyph chart(heading);
    ChartString description;
    description.assignUTF8(title);
    chart.SetDescription(description);
    chart.setViZJSONTemplate(R"({"0":{"fields":[]},"1":)" + specification + "}");
    if (!geoJson.empty())
        chart.addGeoJSON("land", geoJson);
    chart.sendChart();
}

/// A block of fields, each at most six, each an area called by a letter.
std::string fields(int columns, int rows)
{
    std::string features;
    for (int at = 0; at < columns * rows; ++at) {
        const auto corner = [&](int right, int up) {
            return "[" + std::to_string(at % columns + right) + "," +
                   std::to_string(at / columns + up) + "]";
        };
        features += (at > 0 ? "," : "") +
                    (R"({"type":"Feature","properties":{"KEY":")" + std::string(1, "ABCDEF"[at])) +
                    R"("},"geometry":{"type":"Polygon","coordinates":[[)" + corner(0, 0) + "," +
                    corner(1, 0) + "," + corner(1, 1) + "," + corner(0, 1) + "]]}}";
    }
    return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}

/// Field C has no row, and row Z no field.
const std::string kMap = R"({
  "description": "Trees of each field, and where the wells are.",
  "parameters": [{"externalSource": "land"}],
  "layer": [
    {"data": {"values": [{"field": "A", "trees": 12}, {"field": "B", "trees": 47},
      {"field": "D", "trees": 31}, {"field": "E", "trees": 8}, {"field": "F", "trees": 25},
      {"field": "Z", "trees": 1}]},
     "transform": [{"lookup": "field", "from": {"data": {"name": "land"}, "key": "properties.KEY"},
       "as": "geo"}],
     "mark": "geoshape",
     "encoding": {"shape": {"field": "geo", "type": "geojson"},
       "color": {"field": "trees", "type": "quantitative", "title": "Trees"}}},
    {"data": {"values": [{"well": "north", "x": 0.5, "y": 1.5, "depth": 20, "kind": "dug"},
      {"well": "south", "x": 2.2, "y": 0.4, "depth": 5, "kind": "drilled"}]},
     "mark": "circle",
     "encoding": {"longitude": {"field": "x"}, "latitude": {"field": "y"},
       "size": {"field": "depth", "type": "quantitative", "title": "Depth"},
       "color": {"field": "kind", "type": "nominal", "title": "Well"}}}]})";

const std::string kBars = R"({
  "$schema": "https://vega.github.io/schema/vega-lite/v6.json",
  "description": "Days of each kind of weather, by year.",
  "usermeta": {"embedOptions": {"actions": true}},
  "data": {"values": [
    {"weather": "sun", "days": 118, "year": "2012"},
    {"weather": "sun", "days": 205, "year": "2013"},
    {"weather": "rain", "days": 191, "year": "2012"},
    {"weather": "rain", "days": 60, "year": "2013"},
    {"weather": "fog", "days": 26, "year": "2012"}, {"weather": "fog", "days": 82, "year": "2013"},
    {"weather": "snow", "days": 21, "year": "2012"},
    {"weather": "snow", "days": 2, "year": "2013"}]},
  "mark": {"type": "bar", "tooltip": true},
  "transform": [{"calculate": "datum.days / 366 * 100", "as": "share"}],
  "encoding": {
    "x": {"field": "weather", "type": "nominal", "title": "Weather", "axis": {"labelAngle": 0}},
    "xOffset": {"field": "year"},
    "y": {"field": "share", "type": "quantitative", "title": "Percent of days"},
    "color": {"field": "year", "type": "nominal", "title": "Year"}}})";

const std::string kCounts = R"({"title": {"text": "Counts", "subtitle": "The 3 most frequent"},
  "data": {"values": [{"a": "x", "n": 1}, {"a": "y", "n": 2}, {"a": "=z", "n": null}]},
  "mark": "bar", "encoding": {"y": {"field": "a", "type": "nominal"},
    "x": {"field": "n", "type": "quantitative"}}})";

void addView(TnHeading& heading)
{
    xInteractive view(heading);
    ChartString description;
    description.assignUTF8("Model Overview");
    view.SetDescription(description);
    view.setInteractiveJSON(
        R"({"0":{"fields":[{"name":"wind","level":"scale"}]},"1":{"target":"wind",
        "fit":0.8127345612,
        "inputs":[{"name":"temp_max","weight":0.62},{"name":"season","weight":0.38,"lag":2}],
        "residuals":)" +
        kBars + "}}");
    view.sendInteractive();
}

/// A network of one kind of layout, its edges as edgeOf makes them.
std::string networkOf(const std::string& layout, const std::string& nodes,
                      const std::vector<std::string>& edges)
{
    std::string values;
    for (const std::string& edge : edges)
        values += (values.empty() ? "" : ",") + edge;
    return R"({"description": "Who drives whom.", "mark": {"type": "network", "layout": ")" +
           layout + R"("}, "datasets": {"nodes": [)" + nodes + R"(]}, "data": {"values": [)" +
           values + R"(]}, "encoding": {"source": {"field": "Predictor"},
        "target": {"field": "Target"}, "strength": {"field": "Strength"},
        "sign": {"field": "Effect"}, "tooltip": [{"field": "Effect"}]}})";
}

std::string edgeOf(const std::string& from, const std::string& to, double effect, double strength)
{
    return R"({"Predictor":")" + from + R"(","Target":")" + to + R"(","Effect":)" +
           std::to_string(effect) + R"(,"Strength":)" + std::to_string(strength) + "}";
}

/// A small one by forces, one by levels with a cycle, and one that is too large.
void writeNetwork()
{
    TnProcedure procedure("Networks");
    addChart(procedure, "Forces",
             networkOf("force", R"({"name": "sales", "kind": "target"}, {"name": "alone"})",
                       {edgeOf("adverts", "sales", 2, 9), edgeOf("price", "sales", -1, 3),
                        edgeOf("sales", "adverts", 0.5, 1), edgeOf("sales", "sales", 1, 5)}));
    addChart(procedure, "Levels",
             networkOf("levels",
                       R"({"name": "cause", "level": -1}, {"name": "focus", "kind": "focus"},
                          {"name": "</title><img src=x onerror=alert(6)>", "level": 1},
                          {"name": "far", "level": 2})",
                       {edgeOf("cause", "focus", 1, 1),
                        edgeOf("focus", "</title><img src=x onerror=alert(6)>", 1, 2),
                        edgeOf("</title><img src=x onerror=alert(6)>", "far", 1, 2)}));
    std::vector<std::string> edges;
    for (int at = 1; at <= 400; ++at)
        edges.push_back(edgeOf("s" + std::to_string(at / 3), "s" + std::to_string(at), 1, at));
    addChart(procedure, "Large", networkOf("force", "", edges));
}

void writeSample()
{
    TnProcedure procedure("Weather in Seattle");
    TnError(words("12 cases have a missing weight and are left out."), kShowInOutput,
            kLevelWarning);
    TnError(words("in the log only"), kShowInOutput, 0);
    addStatistics(procedure);
    const std::unique_ptr<TnHeading> tables(procedure.Heading(words("Tables")));
    addCrossTable(*tables);
    addLayers(*tables);
    const std::unique_ptr<TnHeading> charts(procedure.Heading(words("Charts")));
    addChart(*charts, "Kinds of Weather", kBars);
    addView(*charts);
    TnError(words("The model could not be saved."), kShowInOutput, kLevelError);
}

void writeHostile()
{
    TnProcedure procedure(kHostile);
    for (const std::string& label : {kHostile, kHebrew, kOverride, std::string(100000, 'x')}) {
        const std::unique_ptr<TnHeading> heading(procedure.Heading(words(label)));
        TnError(words(label), kShowInOutput, kLevelError);
        const Table table = tableUnder(*heading, label);
        const Dimension rows = dimensionOf(*table, label + " rows", TnDimension::Row);
        const Dimension columns = dimensionOf(*table, label + " columns", TnDimension::Column);
        const Dimension layer = dimensionOf(*table, label + " layers", TnDimension::Layer);
        layer->Category(words(label));
        rows->Category(words(label));
        TnCategory column = columns->Category(words(label));
        column.Cell(words(label));
        column.CellNote(note(label));
        table->Caption(words(label));
    }
    addChart(procedure, kHostile, "</script><script>alert(1)</script>");
    addChart(procedure, "of another kind", R"({"glyph": "</script><script>alert(2)</script>"})");
    addChart(procedure, "broken",
             R"({"mark": "bar", "encoding": {"x": {"field": "a", "type": "nominal"}},
                 "transform": [{"filter": "(("}], "data": {"values": [{"a": "<b>kept</b>"}]}})");
    addChart(procedure, "fetching",
             R"({"mark": "point", "encoding": {}, "data": {"url": "https://example.org/x.json"}})");
    addChart(procedure, "</script>",
             R"X({"mark": {"type": "point", "href": "javascript:alert(3)"},
                  "encoding": {"x": {"field": "</script>", "type": "nominal"}},
                  "data": {"values": [{"</script>": "\u2028<img src=x onerror=alert(4)>"}]}})X");
    addChart(procedure, "land",
             R"({"mark": "geoshape", "data": {"name": "land"},
                 "encoding": {"color": {"field": "properties.a", "type": "nominal"}}})",
             R"({"features": [{"properties": {"a": "</title></svg><img src=x onerror=alert(5)>"},
                 "geometry": {"type": "Point", "coordinates": [0, 0]}}]})");
    addChart(procedure, "deep", std::string(100000, '[') + std::string(100000, ']'));
}

void writePlain()
{
    TnProcedure procedure("Plain");
    addStatistics(procedure);
}

void writeMap()
{
    TnProcedure procedure("Orchard");
    addChart(procedure, "Trees and Wells", kMap, fields(3, 2));
}

/// Puts a number into the cell where the open categories meet.
void fill(TnDimension& dimension, const std::vector<std::string>& categories)
{
    for (const std::string& category : categories)
        dimension.Category(words(category)).Cell(number(1));
}

void writeShapes()
{
    TnProcedure procedure("Shapes");
    {
        const Table table = tableUnder(procedure, "rows alone");
        fill(*dimensionOf(*table, "Row", TnDimension::Row), {"a", "b"});
    }
    {
        const Table table = tableUnder(procedure, "columns alone");
        fill(*dimensionOf(*table, "Column", TnDimension::Column), {"a", "b"});
    }
    {
        const Table table = tableUnder(procedure, "hidden labels");
        table->HideTitle();
        table->CornerText(words("corner"));
        const Dimension rows = dimensionOf(*table, "Row", TnDimension::Row);
        const Dimension columns = dimensionOf(*table, "Column", TnDimension::Column);
        columns->Position(TnDimension::Column, 1, true, true);
        rows->Category(words("a"));
        fill(*columns, {"x", "y"});
    }
    {
        const Table table = tableUnder(procedure, "uneven groups");
        const Dimension rows = dimensionOf(*table, "Row", TnDimension::Row);
        const Dimension columns =
            dimensionOf(*table, "Column", TnDimension::Column, 1, TnPivotTable::Descending);
        columns->Position(TnDimension::Column, 1, true, false);
        rows->Category(words("r"));
        const Group shown(columns->Group(words("G"), true, TnGroup::Ascending));
        const Group unseen(columns->Group(words("H"), false, TnGroup::Unsorted));
        for (const char* label : {"2", "1"})
            shown->Category(words(label)).Cell(number(std::stod(label)));
        unseen->Category(words("h")).Cell(number(3));
        columns->Category(words("away")).hide();
        columns->Category(words("z")).Cell(number(4));
    }
    {
        const Table table = tableUnder(procedure, "no category");
        const Dimension rows = dimensionOf(*table, "Row", TnDimension::Row);
        const Dimension columns = dimensionOf(*table, "Column", TnDimension::Column);
        rows->Category(words("a"));
    }
    tableUnder(procedure, "no dimension");
}

/// A hundred folded groups, each with a table and charts, and a table of long numbers.
void writeMany()
{
    TnProcedure procedure("Many");
    {
        const Table table = tableUnder(procedure, "Totals");
        const Dimension rows = dimensionOf(*table, "Row", TnDimension::Row);
        const Dimension columns = dimensionOf(*table, "Column", TnDimension::Column);
        for (const auto& [label, value] :
             {std::pair{"=1+1", 1234567.25}, std::pair{"b", 20000.0}, std::pair{"Total", 9.0}}) {
            rows->Category(words(label));
            columns->Category(words("Sum")).Cell(number(value, kFormatNumber, 2));
        }
    }
    for (int group = 0; group < 100; ++group) {
        const std::unique_ptr<TnHeading> heading(
            procedure.Heading(words("group " + std::to_string(group))));
        addStatistics(*heading);
        for (int chart = 0; chart < 3; ++chart)
            addChart(*heading, "Chart " + std::to_string(chart), kCounts);
    }
    for (const OutputItem& item : procedure.node()->items)
        if (const auto* heading = std::get_if<std::shared_ptr<OutputHeading>>(&item))
            (*heading)->isFolded = true;
}

/// So many rows that a reader notices how long their sorting takes. The total is the last one. Then
/// the same for rows with a common label.
void writeLong()
{
    TnProcedure procedure("Long");
    const Table table = tableUnder(procedure, "Long");
    const Dimension rows = dimensionOf(*table, "Row", TnDimension::Row);
    const Dimension columns = dimensionOf(*table, "Column", TnDimension::Column);
    const auto fill = [&](int row) {
        columns->Category(words("Count")).Cell(number(row * 7919 % 20011, kFormatNumber, 0));
        columns->Category(words("Mean")).Cell(number(madeUp(row, 50), kFormatNumber, 3));
        columns->Category(words("Share")).Cell(number(madeUp(row + 1, 50), kFormatPercent, 1));
        columns->Category(words("Size")).Cell(number(madeUp(row + 2, 5000), kFormatGeneral, 2));
        columns->Category(words("Kind")).Cell(words("kind " + std::to_string(row % 97)));
    };
    for (int row = 0; row < 20000; ++row) {
        rows->Category(words("row " + std::to_string(row)));
        fill(row);
    }
    rows->Category(words("Total"));
    fill(20000);

    const Table values = tableUnder(procedure, "Values");
    const Dimension labels = dimensionOf(*values, "Value", TnDimension::Row);
    const Dimension counts = dimensionOf(*values, "Count", TnDimension::Column);
    const Group valid(labels->Group(words("Valid"), true, TnGroup::Unsorted));
    for (int row = 0; row < 1100; ++row) {
        valid->Category(words("value " + std::to_string(row)));
        counts->Category(words("Count")).Cell(number(row * 7919 % 1103, kFormatNumber, 0));
    }
    labels->Category(words("Total"));
    counts->Category(words("Count")).Cell(number(1100, kFormatNumber, 0));
}

/// A million cells, each of which names its labels.
void writeLarge()
{
    TnProcedure procedure("Large");
    const Table table = tableUnder(procedure, "Large");
    const Dimension block = dimensionOf(*table, "Block", TnDimension::Row, 1);
    const Dimension part = dimensionOf(*table, "Part", TnDimension::Row, 2);
    const Dimension rows = dimensionOf(*table, "Row", TnDimension::Row, 3);
    const Dimension columns = dimensionOf(*table, "Column", TnDimension::Column);
    block->Category(words("all"));
    part->Category(words("all"));
    for (int row = 0; row < 10000; ++row) {
        rows->Category(words(std::to_string(row)));
        for (int column = 0; column < 100; ++column)
            columns->Category(words(std::to_string(column))).Cell(number(row + column / 128.0));
    }
}

} // namespace

int main(int argc, char** argv)
{
    const std::map<std::string, void (*)()> kinds = {
        {"sample", writeSample},   {"hostile", writeHostile}, {"map", writeMap},
        {"network", writeNetwork}, {"plain", writePlain},     {"shapes", writeShapes},
        {"large", writeLarge},     {"many", writeMany},       {"long", writeLong}};
    if (argc != 3 || kinds.count(argv[1]) == 0) {
        std::cerr << "usage: page_samples KIND FILE\n";
        return 2;
    }
    kinds.at(argv[1])();
    std::ofstream file(argv[2], std::ios::binary);
    OutputPage page(OutputTree::instance());
    page.setSubtitle("weather.csv");
    page.write(file);
    return file.flush() ? 0 : 1;
}
