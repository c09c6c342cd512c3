#include "report/page/OutputPage.h"

#include <algorithm>
#include <memory>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ChartOutput.h"
#include "support/OutputParts.h"

namespace {

using Strings = std::vector<std::string>;

/// The figure that a page makes of a chart with a map called "land".
std::string figureOf(const std::string& specification, const std::string& geoJson)
{
    TnProcedure procedure("MAPS");
    xGlyph chart(procedure);
    chart.setViZJSONTemplate(R"({"1":)" + specification + "}");
    chart.addGeoJSON("land", geoJson);
    chart.sendChart();
    const std::string page = OutputPage(*procedure.node()).text();
    const std::size_t begin = page.find("<figure");
    return page.substr(begin, page.find("</figure>") - begin);
}

std::string collection(const std::string& features)
{
    return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}

std::string feature(const std::string& geometry, const std::string& properties = "{}")
{
    return R"({"type":"Feature","properties":)" + properties + R"(,"geometry":)" + geometry + "}";
}

std::string square(int west, const std::string& properties)
{
    const std::string left = std::to_string(west);
    const std::string right = std::to_string(west + 1);
    return feature(R"({"type":"Polygon","coordinates":[[[)" + left + ",0],[" + right + ",0],[" +
                       right + ",1],[" + left + ",1]]]}",
                   properties);
}

Strings found(const std::string& text, const std::string& pattern)
{
    const std::regex expression(pattern);
    Strings found;
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at)
        found.push_back((*at)[1].str() + ((*at).size() > 2 ? " " + (*at)[2].str() : ""));
    return found;
}

std::string joined(const Strings& parts)
{
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : "|") + part;
    return text;
}

double proportionOf(const std::string& figure)
{
    std::smatch box;
    if (!std::regex_search(figure, box, std::regex("viewBox=\"0 0 (\\d+) (\\d+)\" role")))
        return 0;
    return std::stod(box[1]) / std::stod(box[2]);
}

const std::string kAreas = R"({"data":{"name":"land"},"mark":"geoshape"})";

} // namespace

TEST(OutputMap, ShapesKeepTheirProportionsAndStayTogether)
{
    const auto box = [](const char* west, const char* east, const char* south, const char* north) {
        const std::string w = west;
        const std::string e = east;
        const std::string s = south;
        const std::string n = north;
        return "[[[" + w + "," + s + "],[" + e + "," + s + "],[" + e + "," + n + "],[" + w + "," +
               n + "],[" + w + "," + s + "]]]";
    };
    const auto polygon = [](const std::string& rings) {
        return R"({"type":"Polygon","coordinates":)" + rings + "}";
    };
    const auto multi = [](const std::string& left, const std::string& right) {
        return R"({"type":"MultiPolygon","coordinates":[)" + left + "," + right + "]}";
    };
    struct Case
    {
        const char* what;
        std::string geometry;
        double proportion;
        std::size_t rings;
    };
    const Case cases[] = {
        {"a square at the equator", polygon(box("0", "10", "-5", "5")), 1, 1},
        {"one at 60 degrees", polygon(box("0", "10", "55", "65")), 0.5, 1},
        {"a plane", polygon(box("200000", "600000", "0", "100000")), 4, 1},
        {"a hole", polygon("[[[0,-5],[10,-5],[10,5],[0,5]],[[4,-1],[6,-1],[6,1],[4,1]]]"), 1, 2},
        {"across the antimeridian", polygon(box("170", "-170", "-5", "5")), 2, 1},
        {"a line across it", R"({"type":"LineString","coordinates":[[170,-5],[-170,5]]})", 2, 1},
        {"cut there", multi(box("170", "180", "-5", "5"), box("-180", "-170", "-5", "5")), 2, 2},
        {"longitudes from 0 to 360",
         multi(box("170", "180", "-5", "5"), box("180", "190", "-5", "5")), 2, 2},
        {"around a pole", polygon("[[[0,-60],[120,-60],[-120,-60]]]"), 12 * 0.2588, 2},
        {"around it, and cut",
         polygon("[[[-180,-90],[-180,-60],[0,-60],[180,-60],[180,-90],[-180,-90]]]"), 12 * 0.2588,
         1},
        {"around the world", multi(box("-180", "180", "-30", "30"), box("175", "-175", "0", "10")),
         6, 3},
        {"smaller than a dot", multi(box("0", "10", "-5", "5"), box("1", "1.001", "0", "0.001")), 1,
         1}};
    for (const Case& each : cases) {
        const std::string figure = figureOf(kAreas, collection(feature(each.geometry)));
        EXPECT_NEAR(proportionOf(figure), each.proportion, 0.04 * each.proportion) << each.what;
        const Strings paths = found(figure, "<path (?:class=\"line\" )?d=\"([^\"]*)\"");
        ASSERT_EQ(paths.size(), 1U) << each.what;
        EXPECT_EQ(std::ranges::count(paths[0], 'M'), each.rings) << each.what << " " << paths[0];
    }
}

TEST(OutputMap, PathsAreAsFineAsTheEyeAndNotFiner)
{
    std::string line;
    for (int at = 0; at <= 100000; ++at)
        line += (at == 0 ? "[" : ",[") + std::to_string(at / 1e4) + ",0]";
    const std::string figure = figureOf(
        kAreas, collection(feature(R"({"type":"LineString","coordinates":[)" + line + "]}") + "," +
                           feature(R"({"type":"MultiPoint","coordinates":[[0,0],[5,1]]})") + "," +
                           square(3, R"({"name":"Isle"})")));
    // A regular expression would go as deep as the path is long.
    const std::string mark = "class=\"line\" d=\"";
    ASSERT_EQ(found(figure, "class=\"line\" (d)").size(), 1U);
    const std::size_t begin = figure.find(mark) + mark.size();
    const std::size_t size = figure.find('"', begin) - begin;
    EXPECT_GT(size, 2000U);
    EXPECT_LT(size, 10000U);
    EXPECT_EQ(found(figure, "class=\"spot\" d=\"(M[^\"]*h0)\"").size(), 1U);
    EXPECT_EQ(found(figure, "<title>([^<]*)"), Strings{"Isle"});
}

TEST(OutputMap, ValuesFallIntoTheClassesThatTheLegendTells)
{
    // Values, labels and looks with bars between them.
    struct Case
    {
        std::string channel;
        const char* values;
        const char* legend;
        const char* looks;
    };
    const std::string steps = R"("type":"quantitative")";
    const std::string grades = R"("type":"ordinal")";
    const std::string kinds = R"("type":"nominal")";
    const std::vector<Case> cases{
        {steps, "44|50|168|null", "25 – 50|50 – 75|75 – 100|100 – 125|125 – 150|150 – 175|No data",
         "shade0|shade2|shade12|none"},
        {steps, "-0.05|0|0.1", "−0.05 – 0|0 – 0.05|0.05 – 0.1", "shade0|shade6|shade12"},
        {steps, "7|7|\"8\"", "7|No data", "shade6|shade6|none"},
        {steps, "null", "No data", "none"},
        {steps + R"(,"scale":{"type":"threshold","domain":[10,20]})", "9|10|20",
         "&lt; 10|10 – 20|≥ 20", "shade0|shade6|shade12"},
        {steps + R"(,"scale":{"type":"quantile","range":["#eee","#111"]})", "1|2|3|100",
         "1 – 2.5|2.5 – 100", "#eee|#eee|#111|#111"},
        {steps + R"(,"scale":{"type":"quantile"})", "0|1|2|3|4|5", "0 – 1|1 – 2|2 – 3|3 – 4|4 – 5",
         "shade0|shade3|shade6|shade9|shade12|shade12"},
        {steps + R"(,"scale":{"type":"quantize","domain":[0,10],"range":["red","x;y"]})", "-3|5|11",
         "0 – 2|2 – 4|4 – 6|6 – 8|8 – 10", "shade0|shade6|shade12"},
        {kinds + R"(,"scale":{"domain":["z","never","b"]})", "\"b\"|\"z\"|10|9", "z|b|9|10",
         "kind2|kind1|kind4|kind3"},
        {kinds, "0|1|2|3|4|5|6|7|8|9", "0|1|2|3|4|5|6|7|Other",
         "kind1|kind2|kind3|kind4|kind5|kind6|kind7|kind8|rest|rest"},
        {grades, "3|1|2", "1|2|3", "shade12|shade0|shade6"},
    };
    for (const Case& each : cases) {
        std::string features;
        int west = 0;
        for (const std::string& value : found(std::string(each.values) + "|", "([^|]*)\\|"))
            features += square(west++, R"({"v":)" + value + "}") + ",";
        features.pop_back();
        const std::string figure =
            figureOf(R"({"data":{"name":"land"},"mark":"geoshape","encoding":{"color":)"
                     R"({"field":"properties.v",)" +
                         each.channel + "}}}",
                     collection(features));
        EXPECT_EQ(joined(found(figure, "</svg> (?:<bdi>)?([^<]*)(?:</bdi>)?</li>")), each.legend)
            << each.channel;
        EXPECT_EQ(joined(found(figure, "<g (?:class|color)=\"([^\"]*)\" role")), each.looks)
            << each.channel;
        const bool hasHatch = figure.find("<pattern") != std::string::npos;
        EXPECT_EQ(std::string(each.legend).ends_with("No data"), hasHatch) << each.channel;
    }
}

TEST(OutputMap, AreasFindTheirRecordsFromEitherSide)
{
    const std::string land =
        collection(square(0, R"({"KEY":1})") + "," + square(2, R"({"KEY":"</title><b>"})") + "," +
                   feature("null", R"({"KEY":3})") + "," +
                   feature(R"({"type":"Polygon","coordinates":[[0,0]]})"));
    const std::string rows = R"({"values":[{"k":"1","n":5.25},{"k":"far","n":1},{"k":"<i>"}]})";
    const std::string layers[] = {
        R"("data":{"name":"land"},"transform":[{"lookup":"properties.KEY","from":{"data":)" + rows +
            R"(,"key":"k","fields":["n"]},"as":["count"]}],"encoding":{"color":{"field":"count",)",
        R"("data":)" + rows +
            R"(,"transform":[{"lookup":"k","from":{"data":{"name":"land"},"key":"properties.KEY"},)"
            R"("as":"geo"}],"encoding":{"shape":{"field":"geo","type":"geojson"},)"
            R"("color":{"field":"n","title":"count",)"};
    for (const std::string& layer : layers) {
        const std::string figure =
            figureOf("{" + layer + R"("type":"quantitative"}},"mark":"geoshape"})",
                     R"({"source":{"value":)" + land + "}}");
        EXPECT_EQ(found(figure, "<title>([^<]*)"),
                  (Strings{"1\ncount: 5.25", "&lt;/title&gt;&lt;b&gt;\ncount: No data"}));
        EXPECT_NE(figure.find("drawn: <bdi>2</bdi>"), std::string::npos);
        EXPECT_NE(figure.find("on the map: <bdi>far, &lt;i&gt;</bdi>"), std::string::npos);
        EXPECT_NE(figure.find("<td>5.25</td>"), std::string::npos);
        EXPECT_EQ(figure.find("script"), std::string::npos);
    }
}

TEST(OutputMap, PointsStandOverAreasTheLargestFirst)
{
    const std::string figure = figureOf(
        R"({"layer":[{"data":{"name":"land"},"mark":{"type":"geoshape"}},{"mark":"circle",)"
        R"("data":{"values":[{"at":"small","e":0.2,"n":0.5,"v":25},{"at":"large","e":1,"n":0.5,)"
        R"("v":100},{"at":"nowhere","e":null,"n":1}]},"encoding":{"longitude":{"field":"e"},)"
        R"("latitude":{"field":"n"},"size":{"field":"v"},"tooltip":[{"field":"at","title":"At"}]}}]})",
        collection(square(0, "{}")));
    EXPECT_EQ(found(figure, "role=\"graphics-symbol\"><title>([^<]*)</title><circle.*r=\"(\\d+)\""),
              (Strings{"At: large 140", "At: small 70"}));
    EXPECT_NE(figure.find("drawn: <bdi>1</bdi>"), std::string::npos);
    EXPECT_LT(figure.find("class=\"land\""), figure.find("<circle"));
}

TEST(OutputMap, WhatTheHostCannotDrawIsLeftToTheLibrary)
{
    const char* const others[] = {
        R"({"data":{"name":"land"},"mark":"geoshape","projection":{"type":"albersUsa"}})",
        R"({"data":{"name":"land"},"mark":"geoshape","params":[]})",
        R"({"data":{"name":"land"},"mark":"geoshape","transform":[{"filter":"datum.x"}]})",
        R"({"data":{"name":"sea"},"mark":"geoshape"})",
        R"({"data":{"url":"land.json"},"mark":"geoshape"})",
        R"({"data":{"name":"land"},"mark":"geoshape","encoding":{"color":{"aggregate":"count"}}})",
        R"({"data":{"name":"land"},"mark":"geoshape","encoding":{"row":{"field":"x"}}})",
        R"({"data":{"name":"land"},"mark":"geoshape",
            "encoding":{"color":{"field":"properties.v","type":"quantitative",
                                 "scale":{"type":"threshold","domain":[[1],"2"]}}}})",
        R"({"data":{"values":[{"a":1}]},"mark":"circle","encoding":{"x":{"field":"a"}}})",
        R"({"layer":[{"data":{"name":"land"},"mark":"geoshape"},{"mark":"text","data":{"values":[]}}]})"};
    for (const char* other : others)
        EXPECT_NE(figureOf(other, collection("")).find("class=\"specification\""),
                  std::string::npos)
            << other;
    for (const char* text :
         {"no JSON", "{}", R"({"features":[]})", R"({"features":[3,null,"x"]})"}) {
        const std::string figure = figureOf(kAreas, text);
        EXPECT_NE(figure.find("cannot be read"), std::string::npos) << text;
        EXPECT_EQ(figure.find("<svg"), std::string::npos) << text;
    }
}
