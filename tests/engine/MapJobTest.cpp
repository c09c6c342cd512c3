#include <sys/resource.h>

#include <chrono>

#include <nlohmann/json.hpp>

#include "CFMetaData.h"
#include "Container.h"
#include "EngineException.h"
#include "MetadataService.h"
#include "engine/EngineFixture.h"
#include "engine/MapSamples.h"
#include "maps/GeographyLibrary.h"

// Jobs over shapes: what a shape file and a map service hold, and what the steps make of it.

namespace {

using namespace EngineTest;
using testing::HasSubstr;

class ModelContainer : public EmbeddedHV::Container
{
public:
    std::string getName() const override { return "model"; }
    std::string getAbsolutePath() const override { return {}; }
};

class MapJob : public EngineFixture
{
protected:
    MapJob()
    {
        writeShapeFile(path("land.shp"), "POLYGON", 4326,
                       {{"POLYGON ((0 0,0 4,4 4,4 0,0 0),(1 1,2 1,2 2,1 2,1 1))", "Åland", 7, 0.5,
                         "2024/02/29"},
                        {"MULTIPOLYGON (((10 0,10 1,11 0,10 0)),((20 0,20 1,21 0,20 0)))", "B",
                         9007199254, -2, ""},
                        {"", "none", 3, 1e-3, "1969/12/31"}});
    }

    CFMetaData describe(const std::string& job) const
    {
        void* reserved = nullptr;
        return CFMetaData(service().getMetaDataService()->getMetadata(
            nullptr, expanded(job), reserved, 0, ModelContainer()));
    }
    /// What a job writes as GeoJSON, or its fault.
    std::string geoJson(const std::string& steps)
    {
        std::filesystem::remove(path("out.json"));
        const RecordingListener listener = run(
            steps + R"( -> write({"dataDestination": "$DIR/out.json", "type": "text/geojson"}))");
        told = listener.messages;
        return listener.ending == "success" ? read("out.json")
                                            : listener.errorId + " " + listener.errorText;
    }
    /// The same as CSV.
    std::string csv(const std::string& steps)
    {
        const RecordingListener listener = run(steps + " -> " + writeCsv("out.csv"));
        return listener.ending == "success" ? read("out.csv")
                                            : listener.errorId + " " + listener.errorText;
    }

    /// The geometry of the one record that a job writes as GeoJSON.
    nlohmann::json geometry(const std::string& steps)
    {
        const auto text = nlohmann::json::parse(geoJson(steps), nullptr, false);
        return text.is_discarded() ? nlohmann::json() : text["features"][0]["geometry"];
    }

    std::vector<std::pair<std::string, std::string>> told;
};

/// The areas of the rings of a polygon, positive for those that go counter-clockwise, and summed
/// up over the polygons of a multipolygon.
double areaOf(const nlohmann::json& geometry)
{
    const bool isOne = geometry["type"] == "Polygon";
    double area = 0;
    const nlohmann::json& coordinates = geometry["coordinates"];
    for (const auto& polygon : isOne ? nlohmann::json::array({coordinates}) : coordinates)
        for (const auto& ring : polygon)
            for (std::size_t i = 0; i + 1 < ring.size(); ++i)
                area += (ring[i][0].get<double>() * ring[i + 1][1].get<double>() -
                         ring[i + 1][0].get<double>() * ring[i][1].get<double>()) /
                        2;
    return area;
}

/// The most memory that the process has had, in MiB.
long peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

std::string readShape(const std::string& name, const std::string& more = "")
{
    return R"(read({"geospatial": {"location": "$DIR/)" + name + R"(", "type": "shp"})" + more +
           "})";
}

std::string readService(const std::string& address, int layer, const std::string& more = "")
{
    return R"(read({"geospatial": {"location": ")" + address +
           R"(", "type": "mps", "queryLayer": )" + std::to_string(layer) + "}" + more + "})";
}

std::string move(const std::string& in, const std::string& out)
{
    return R"(reprojection({"type": "all", "reprojectionFields": [{)" +
           (in.empty() ? in : R"("inSR": )" + in + ", ") + R"("outSR": )" + out + "}]})";
}

constexpr const char* kLand =
    R"({"type":"FeatureCollection","features":[
{"type":"Feature","properties":{"name":"Åland","code":7,"share":0.5,"day":"2024-02-29"},)"
    R"("geometry":{"type":"Polygon","coordinates":)"
    R"([[[0,0],[4,0],[4,4],[0,4],[0,0]],[[1,1],[1,2],[2,2],[2,1],[1,1]]]}},
{"type":"Feature","properties":{"name":"B","code":9007199254,"share":-2,"day":null},)"
    R"("geometry":{"type":"MultiPolygon","coordinates":)"
    R"([[[[10,0],[11,0],[10,1],[10,0]]],[[[20,0],[21,0],[20,1],[20,0]]]]}},
{"type":"Feature","properties":{"name":"none","code":3,"share":0.001,"day":"1969-12-31"},)"
    R"("geometry":null}
]}
)";

TEST_F(MapJob, ShapesGoThroughFilesUnchanged)
{
    EXPECT_EQ(geoJson(readShape("land.shp")), kLand);
    ASSERT_EQ(run(readShape("land.shp") +
                  R"( -> write({"dataDestination": "$DIR/land.hvbf", "type": "hvbf"}))")
                  .ending,
              "success");
    EXPECT_EQ(geoJson(R"(read({"filesystem": {"locations": [{"path": "$DIR/land.hvbf",
                         "parser": {"name": "hvbf"}}]}}))"),
              kLand);
}

TEST_F(MapJob, TheDataModelTellsFieldsAndShapes)
{
    const CFMetaData model = describe(readShape("land.shp", R"(, "maxRecordsCount": 1)"));
    ASSERT_EQ(model.FieldCount(), 5U);
    const CFField::StorageType storages[] = {CFField::String, CFField::Integer, CFField::Real,
                                             CFField::Date, CFField::String};
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(model.GetField(i)->GetStorage(), storages[i]) << model.GetField(i)->GetName();
    const CFField& shape = *model.GetField(4);
    EXPECT_EQ(shape.GetType(), CFField::Typeless);
    ASSERT_NE(shape.GetGeo(), nullptr);
    CFGeo expected(CFGeo::MultiPolygon, 2);
    expected.SetCoordinateSystem(4326, "WGS 84", false, shape.GetGeo()->GetWkt());
    expected.SetEnvelope({0, 4, 21, 0});
    EXPECT_TRUE(*shape.GetGeo() == expected);
    EXPECT_THAT(shape.GetGeo()->GetWkt(), HasSubstr(R"(AUTHORITY["EPSG","4326"])"));
}

TEST_F(MapJob, OtherStepsTakeShapesLikeAnyText)
{
    write("people.csv", "name,people\nB,5\nC,6\n");
    const std::pair<std::string, std::string> cases[] = {
        {readShape("land.shp") +
             R"( -> filterRecords(_, c => r => r.code > 5) -> filterFields({"fields": ["name"]}))",
         "name\nÅland\nB\n"},
        {readShape("land.shp", R"(, "maxRecordsCount": 1)") +
             R"( -> filterFields({"fields": ["code"]}))",
         "code\n7\n"},
        {readShape("land.shp") +
             R"( -> aggregate({"output": [{"function": "count", "input": "shape"}]}))",
         "count_shape\n2\n"},
        {readShape("land.shp") +
             R"( -> aggregate({"output": [{"function": "count", "outName": "n"}]}))",
         "n\n3\n"},
    };
    for (const auto& [job, expected] : cases)
        EXPECT_EQ(csv(job), expected) << job;
}

struct Fault
{
    std::string job;
    const char* text;
};

TEST_F(MapJob, AMapThatCannotBeReadNamesItself)
{
    for (const char* name : {"half", "noindex"})
        writeShapeFile(path(std::string(name) + ".shp"), "POINT", 0, {{"POINT (1 2)", "p"}});
    std::filesystem::remove(path("half.dbf"));
    std::filesystem::remove(path("noindex.shx"));
    writeShapeFile(path("cut.shp"), "POINT", 0, {{"POINT (1 2)", "p"}});
    write("cut.shp", "no shapes");
    std::filesystem::create_directory(path("folder.shp"));
    const Fault faults[] = {
        {readShape("gone.shp"), "HVEIO0001E read: $DIR/gone.shp: there is no such file"},
        {readShape("half.shp"), "no file with the extension .dbf next to"},
        {readShape("noindex.shp"), "no file with the extension .shx next to"},
        {readShape("cut.shp"), "HVEIO0005E read: $DIR/cut.shp: this is not a shape file"},
        {readShape("folder.shp"), "this is a folder"},
        {R"(read({"geospatial": {"location": "x", "type": "kml"}}))",
         R"("geospatial.type" is "kml"; known are shp and mps)"},
        {R"(read({"geospatial": {"type": "shp"}}))", R"("geospatial.location" is missing)"},
        {readService("ftp://host/a", 0), "only http, https and file addresses"},
        {readService("file:///gone", 2), "HVEGE0001E read: file:///gone/2.json: there is no such"},
        {readCsv("x.csv"), "HVEGE0004E write: the records have no geospatial field"},
    };
    write("x.csv", "x\n1\n");
    for (const Fault& fault : faults) {
        std::string expected = fault.text;
        if (const auto at = expected.find("$DIR"); at != std::string::npos)
            expected.replace(at, 4, path("").substr(0, path("").size() - 1));
        EXPECT_THAT(geoJson(fault.job), HasSubstr(expected)) << fault.job;
        EXPECT_THAT(files(), testing::Not(testing::Contains("out.json")));
    }
}

// A degree of longitude is this many metres at the equator of the web's projection.
constexpr const char* kWebPoint = "[111319.49";

TEST_F(MapJob, ReprojectionMovesShapesByWhateverNamesTheSystem)
{
    writeShapeFile(path("p.shp"), "POINT", 4326, {{"POINT (1 0)", "p"}, {"", "q"}});
    for (const char* target : {R"({"wkid": 3857})", R"({"csName": "WGS 84 / Pseudo-Mercator"})",
                               R"({"csName": "wgs 84 / pseudo-mercator", "wkid": 4326})",
                               R"({"csName": "none such", "wkid": 3857})"}) {
        const std::string moved = geoJson(readShape("p.shp") + " -> " + move("", target));
        EXPECT_THAT(moved, HasSubstr(kWebPoint)) << target;
        EXPECT_THAT(moved, HasSubstr("urn:ogc:def:crs:EPSG::3857")) << target;
        EXPECT_THAT(moved, HasSubstr(R"("geometry":null)"));
    }
    EXPECT_THAT(geoJson(readShape("p.shp") + " -> " + move("", R"({"wkid": 102100})")),
                HasSubstr("urn:ogc:def:crs:ESRI::102100"));
    // A system that has no well-known text of the older form.
    EXPECT_THAT(geoJson(readShape("p.shp") + " -> " + move("", R"({"wkid": 54035})")),
                HasSubstr("urn:ogc:def:crs:ESRI::54035"));
    const CFMetaData model =
        describe(readShape("p.shp") + " -> " + move(R"({"wkid": 4326})", R"({"wkid": 32633})"));
    const CFGeo* geo = model.GetField(model.FieldCount() - 1)->GetGeo();
    ASSERT_NE(geo, nullptr);
    EXPECT_EQ(geo->GetCsname(), "WGS 84 / UTM zone 33N");
    EXPECT_TRUE(geo->IsProjected());
    EXPECT_TRUE(geo->GetEnvelope());
    // There and back again.
    EXPECT_THAT(geoJson(readShape("land.shp") + " -> " + move("", R"({"wkid": 3395})") + " -> " +
                        move("", R"({"wkid": 4326})") +
                        R"( -> filterRecords(_, c => r => r.code == 7))"),
                testing::ContainsRegex(R"(\[\[\[0,0\],\[(4|3\.9999999|4\.0000000)[0-9]*,0\])"));
}

// Shapes are transformed as points while a map is read, or later as texts. A limit of the records
// is a step of its own behind the reading.
TEST_F(MapJob, ShapesMoveAlikeAsPointsAndAsTexts)
{
    struct Case
    {
        const char* kind;
        int from;
        int to;
        std::vector<SampleRecord> records;
    };
    const Case cases[] = {
        {"POINT", 4326, 32633, {{"POINT (105 0)", "far"}, {"POINT (15 0)", "near"}, {"", "none"}}},
        {"MULTIPOINT Z", 4326, 3857, {{"MULTIPOINT Z ((1 2 3),(-0.1 1e-9 4))", "p"}}},
        {"LINESTRING", 3031, 4326, {{"LINESTRING (-1e5 -15e5,1e5 -15e5)", "across"}}},
        // The axes of this target point to the west and to the south.
        {"POLYGON",
         4326,
         5513,
         {{"POLYGON ((15 49,15 50,16 50,16 49,15 49),(15.2 49.2,15.4 49.2,15.4 49.4,15.2 49.2))",
           "hole"},
          {"MULTIPOLYGON (((15 49,15 50,16 49,15 49)),((17 49,17 50,18 49,17 49)))", "two"}}},
        {"POLYGON",
         3031,
         4326,
         {{"POLYGON ((-1e6 -1e6,1e6 -1e6,1e6 1e6,-1e6 1e6,-1e6 -1e6))", "pole"}}},
    };
    const auto agree = [this](const std::string& source, const std::string& limited, int to) {
        const std::string step = " -> " + move("", R"({"wkid": )" + std::to_string(to) + "}");
        const std::string points = geoJson(source + step);
        const auto toldOfPoints = told;
        EXPECT_THAT(points, HasSubstr(R"("coordinates":[)"));
        EXPECT_EQ(points, geoJson(limited + step));
        EXPECT_EQ(toldOfPoints, told);
    };
    constexpr const char* kLimit = R"(, "maxRecordsCount": 1000)";
    for (const Case& row : cases) {
        SCOPED_TRACE(row.records.front().name);
        writeShapeFile(path("m.shp"), row.kind, row.from, row.records);
        agree(readShape("m.shp"), readShape("m.shp", kLimit), row.to);
    }
    const MapServer server;
    const std::string address = server.address() + "/pages";
    agree(readService(address, 3), readService(address, 3, kLimit), 3857);
}

TEST_F(MapJob, AMapIsReadInTwoSystemsAtOnce)
{
    EXPECT_THAT(csv("val land = " + readShape("land.shp") + " val moved = land -> " +
                    move("", R"({"wkid": 3857})") + " union({}, land: land, moved: moved) -> " +
                    R"(filterFields({"fields": ["shape"]}))"),
                testing::AllOf(HasSubstr("[[[0,0],[4,0],"), HasSubstr("[445277.96")));
}

TEST_F(MapJob, ATransformationCanBeNamed)
{
    writeShapeFile(path("ed.shp"), "POINT", 4230, {{"POINT (10 50)", "p"}});
    const auto with = [&](const std::string& method) {
        return geoJson(readShape("ed.shp") + " -> " +
                       move("", R"({"wkid": 4326, "transMethodsName": ")" + method + "\"}"));
    };
    const std::string first = with("ED50 to WGS 84 (1)");
    const std::string other = with("ED50 to WGS 84 (2)");
    EXPECT_THAT(first, HasSubstr("[9.99"));
    EXPECT_THAT(other, HasSubstr("[9.99"));
    EXPECT_NE(first, other);
    EXPECT_THAT(with("by magic"), HasSubstr("HVEGE0003E reprojection: there is no transformation "
                                            "\"by magic\" between ED50 and WGS 84; known are"));
}

TEST_F(MapJob, AShapeWithoutAPlaceInTheNewSystemIsMissing)
{
    writeShapeFile(path("far.shp"), "POINT", 4326, {{"POINT (105 0)", "p"}, {"POINT (15 0)", "q"}});
    EXPECT_THAT(geoJson(readShape("far.shp") + " -> " + move("", R"({"wkid": 32633})")),
                HasSubstr(R"("geometry":null)"));
    ASSERT_EQ(told.size(), 1U);
    EXPECT_EQ(told[0].first, "HVEGE0007W");
    EXPECT_THAT(told[0].second, HasSubstr("1 shape of the field \"shape\" have no place"));
}

TEST_F(MapJob, AnAreaKeepsItsExtentAndDirection)
{
    struct Case
    {
        int from;
        const char* shape;
        int to;
        const char* type;
        double area; ///< 0 for any above it
    };
    constexpr const char* kAroundPole =
        "(-1000000 -1000000,1000000 -1000000,1000000 1000000,-1000000 1000000,-1000000 -1000000)";
    const std::string pole = std::string("POLYGON (") + kAroundPole + ")";
    const std::string ring = std::string("POLYGON (") + kAroundPole +
                             ",(-10000 -10000,-10000 10000,10000 10000,10000 "
                             "-10000,-10000 -10000))";
    const Case cases[] = {
        {3031, pole.c_str(), 4326, "Polygon", 360 * (90 - 77.0374006)},
        {3995, pole.c_str(), 4326, "Polygon", 360 * (90 - 77.0374006)},
        {3031, ring.c_str(), 4326, "Polygon", 360 * (89.8698406 - 77.0374006)},
        // Across the antimeridian, and far from it.
        {3031, "POLYGON ((-1e5 -15e5,1e5 -15e5,1e5 -1e6,-1e5 -1e6,-1e5 -15e5))", 4326,
         "MultiPolygon", 43.2597},
        {3031, "POLYGON ((-1e5 15e5,1e5 15e5,1e5 1e6,-1e5 1e6,-1e5 15e5))", 4326, "Polygon",
         43.2597},
        // The axes of the target point to the west and to the south.
        {4326, "POLYGON ((15 49,15 50,16 50,16 49,15 49))", 5513, "Polygon", 0},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.shape);
        writeShapeFile(path("area.shp"), "POLYGON", row.from, {{row.shape, "p"}});
        const auto moved = geometry(readShape("area.shp") + " -> " +
                                    move("", R"({"wkid": )" + std::to_string(row.to) + "}"));
        ASSERT_TRUE(moved.is_object());
        EXPECT_EQ(moved["type"], row.type);
        if (row.area > 0)
            EXPECT_NEAR(areaOf(moved), row.area, 0.01);
        else
            EXPECT_GT(areaOf(moved), 0);
    }
}

TEST_F(MapJob, ARingAroundAPoleKeepsItsHeight)
{
    writeShapeFile(
        path("pole.shp"), "POLYGON Z", 3031,
        {{"POLYGON Z ((-1e6 -1e6 5,1e6 -1e6 5,1e6 1e6 5,-1e6 1e6 5,-1e6 -1e6 5))", "p"}});
    const auto moved = geometry(readShape("pole.shp") + " -> " + move("", R"({"wkid": 4326})"));
    EXPECT_EQ(moved["type"], "Polygon");
    for (const auto& point : moved["coordinates"][0])
        EXPECT_NEAR(point[2].get<double>(), 5, 1e-6) << point;
}

TEST_F(MapJob, LinesAreCutWherePointsStayWhole)
{
    const auto moved = [this](const char* kind, const char* shape) {
        writeShapeFile(path("part.shp"), kind, 3031, {{shape, "p"}});
        return geometry(readShape("part.shp") + " -> " + move("", R"({"wkid": 4326})"));
    };
    const auto across = moved("LINESTRING", "LINESTRING (-1e5 -15e5,1e5 -15e5)");
    EXPECT_EQ(across["type"], "MultiLineString");
    ASSERT_EQ(across["coordinates"].size(), 2U);
    for (const auto& line : across["coordinates"]) {
        const double from = line[0][0];
        const double to = line[1][0];
        EXPECT_DOUBLE_EQ(std::max(std::abs(from), std::abs(to)), 180);
        EXPECT_NEAR(std::abs(to - from), 3.8141, 1e-4);
    }
    const auto away = moved("LINESTRING", "LINESTRING (-1e5 15e5,1e5 15e5)");
    EXPECT_EQ(away["type"], "LineString");
    EXPECT_NEAR(away["coordinates"][1][0], 3.8141, 1e-4);
    EXPECT_EQ(moved("LINESTRING", "MULTILINESTRING ((-1e5 15e5,1e5 15e5),(0 5e5,1 5e5))")["type"],
              "MultiLineString");
    const auto points = moved("MULTIPOINT", "MULTIPOINT ((-1e5 -15e5),(1e5 -15e5))");
    EXPECT_EQ(points["type"], "MultiPoint");
    EXPECT_EQ(points["coordinates"].size(), 2U);
}

TEST_F(MapJob, SurfacesAreReadAsPolygons)
{
    writeShapeFile(path("patch.shp"), "TIN Z", 0,
                   {{"TIN Z (((0 0 1,1 0 1,0 1 1,0 0 1)),((1 0 1,1 1 1,0 1 1,1 0 1)))", "p"}});
    EXPECT_EQ(geometry(readShape("patch.shp")),
              nlohmann::json::parse(R"({"type": "MultiPolygon", "coordinates":
                  [[[[0,0,1],[1,0,1],[0,1,1],[0,0,1]]],[[[1,0,1],[1,1,1],[0,1,1],[1,0,1]]]]})"));
}

TEST_F(MapJob, AWrongReprojectionSaysWhy)
{
    writeShapeFile(path("plain.shp"), "POINT", 0, {{"POINT (1 2)", "p"}});
    write("x.csv", "x,s\n1,a\n");
    const std::string shape = readShape("plain.shp") + " -> ";
    const Fault faults[] = {
        {shape + move("", R"({"wkid": 3857})"), "HVEGE0005E"},
        {shape + move(R"({"csName": "none such"})", R"({"wkid": 3857})"),
         R"(HVEGE0002E reprojection: there is no coordinate system "none such")"},
        {shape + move(R"({"wkid": 4326})", R"({"wkid": 0})"), "HVEGE0002E"},
        {shape + move(R"({"wkid": 4326})", "{}"),
         R"("reprojectionFields[0].outSR.csName" is miss)"},
        {shape + R"(reprojection({"type": "all", "reprojectionFields": [{}]}))",
         R"("reprojectionFields[0].outSR" is missing)"},
        {shape + R"(reprojection({"type": "some", "reprojectionFields": [{}]}))", R"(is "some")"},
        {shape + R"(reprojection({"type": "all", "reprojectionFields": []}))", "is empty"},
        {shape + R"(reprojection({"type": "all", "reprojectionFields": [{}, {}]}))", "2 entries"},
        {shape + R"(reprojection({"type": "part", "reprojectionFields": [{"name": "nam"}]}))",
         R"(did you mean "name"?)"},
        {shape + R"(reprojection({"type": "part", "reprojectionFields": [{"name": "name"}]}))",
         R"(HVEGE0004E reprojection: the field "name" is not geospatial)"},
        {readCsv("x.csv") + " -> " + move("", R"({"wkid": 3857})"), "HVEGE0004E"},
        {readCsv("x.csv") + R"( -> updateDataModel({"fields": [{"name": "s", "Geo":
             {"type": "Point", "wkid": "4326"}}]}) -> )" +
             move("", R"({"wkid": 3857})"),
         R"(HVEGE0006E reprojection: a value is not a shape: "a")"},
        {readCsv("x.csv") + R"( -> updateDataModel({"fields": [{"name": "s", "Geo":
             {"type": "Point", "wkid": "4326"}}]}))",
         R"(a value of the field "s" is not a shape)"},
    };
    for (const Fault& fault : faults)
        EXPECT_THAT(geoJson(fault.job), HasSubstr(fault.text)) << fault.job;
}

TEST_F(MapJob, CoordinatesOfRecordsBecomePoints)
{
    write("in.csv", "x,y,n\n1,2.5,a\n,3,b\n-1e-7,4,c\n");
    const std::string points =
        readCsv("in.csv") + R"( -> deriveField(_, c => r => ("at", [r.x, r.y])) -> updateDataModel(
            {"fields": [{"name": "at", "Geo": {"type": "Point", "coordinates": "2",
             "wkid": "4326", "csname": "WGS 84", "isProjected": false, "wkt": ""}}]}))";
    const std::string text = geoJson(points);
    EXPECT_THAT(text, HasSubstr(R"("properties":{"x":1,"y":2.5,"n":"a"},"geometry":{"type":"Point")"
                                R"(,"coordinates":[1.0, 2.5]}})"));
    EXPECT_THAT(text, HasSubstr(R"("n":"b"},"geometry":null)"));
    EXPECT_THAT(text, HasSubstr("[-1e-07, 4.0]"));
    EXPECT_THAT(geoJson(points + " -> " + move("", R"({"wkid": 3857})")), HasSubstr(kWebPoint));
    write("high.csv", "x,y,z\n1,2,\n1,,3\n1,2,3\n");
    const std::string high =
        csv(readCsv("high.csv") + R"( -> deriveField(_, c => r => ("at", [r.x, r.y, r.z])))");
    EXPECT_EQ(high, "x,y,z,at\n1,2,,\"[1.0, 2.0]\"\n1,,3,\n1,2,3,\"[1.0, 2.0, 3.0]\"\n");
}

TEST_F(MapJob, TheDocumentCanNameItsResource)
{
    const auto written = run(
        readShape("land.shp") +
        R"( -> write({"dataDestination": "$DIR/out.json", "dataModelDestination": "$DIR/out.xml",
            "type": "text/geojson", "metadata": {"resourceId": "r\"1", "key": "name"}}))");
    ASSERT_EQ(written.ending, "success") << written.errorText;
    EXPECT_THAT(read("out.json"),
                HasSubstr(R"("metadata":{"resourceId":"r\"1","key":"name"},"features")"));
    EXPECT_EQ(CFMetaData(read("out.xml")).FieldCount(), 5U);
}

TEST_F(MapJob, ALayerOfAServiceIsReadInPages)
{
    const MapServer server;
    const std::string job = readService(server.address() + "/pages", 3);
    const std::string counts =
        csv(job + R"( -> aggregate({"output": [{"function": "count", "input": "OID"},
                      {"function": "max", "input": "OID"}]}))");
    EXPECT_EQ(counts, "count_OID,max_OID\n25,24\n");
    const std::string kinds =
        R"( -> aggregate({"output": [{"function": "count", "input": "kind"}]}))";
    // Pages that begin with the same values.
    EXPECT_EQ(csv(readService(server.address() + "/alike", 3) + kinds), "count_kind\n25\n");
    EXPECT_EQ(csv(readService(server.address() + "/pages?token=t", 3, R"(, "maxRecordsCount": 3)")),
              "OID,town,kind,seen,shape\n"
              "0,town 0,1,,\"{\"\"type\"\":\"\"Point\"\",\"\"coordinates\"\":[0,0]}\"\n"
              "1,town 1,2,1970-01-01 00:00:01.001,\n"
              "2,town 2,1,1970-01-01 00:00:02.001,"
              "\"{\"\"type\"\":\"\"Point\"\",\"\"coordinates\"\":[2,4]}\"\n");
    const CFMetaData model = describe(job);
    ASSERT_EQ(model.FieldCount(), 5U);
    EXPECT_EQ(model.GetField(1)->GetLabel(), "The town");
    EXPECT_EQ(model.GetField(2)->GetValueLabels().size(), 2U);
    EXPECT_EQ(model.GetField(4)->GetGeo()->GetWkid(), 4326);
    const Fault faults[] = {
        {readService(server.address() + "/cut", 3), "gives only 10 records"},
        {readService(server.address() + "/stuck", 3), "the same records again"},
        {readService(server.address() + "/broken", 3), "the answer is not JSON"},
        {readService(server.address() + "/deep", 3), "the answer is nested deeper than 64 levels"},
        {readService(server.address() + "/many", 3), "the answer holds more than 1000000 values"},
        {readService(server.address() + "/fault?token=secret", 3),
         "/fault/3: the service reports a "
         "fault: Token Required"},
        {readService(server.address() + "/gone", 3), "the service does not answer"},
    };
    for (const Fault& fault : faults) {
        const std::string result = csv(fault.job);
        EXPECT_THAT(result, HasSubstr(fault.text));
        EXPECT_THAT(result, HasSubstr("HVEGE0001E read: http://127.0.0.1"));
    }
}

TEST_F(MapJob, ALayerWithoutAnEndIsRefused)
{
    using EmbeddedHV::maps::LayerBounds;
    const MapServer server;
    const auto count = [&](const LayerBounds& bounds) {
        const auto layer = EmbeddedHV::maps::geography().openServiceLayer(
            server.address() + "/endless", 3, bounds, nullptr);
        layer->rewind({0});
        std::uint64_t records = 0;
        try {
            while (layer->next())
                ++records;
        } catch (const EmbeddedHV::maps::GeographyError& error) {
            return std::string(error.what());
        }
        return std::to_string(records);
    };
    EXPECT_EQ(count({.wanted = 35, .records = 20}), "35");
    // A page of ten records has more values, one of five has not.
    EXPECT_EQ(count({.wanted = 35, .values = 100}), "35");
    EXPECT_THAT(count({.wanted = 35, .values = 5}), HasSubstr("holds more than 5 values"));
    EXPECT_THAT(count({.records = 20}),
                HasSubstr("/endless/3: the layer has more than 20 records"));
    EXPECT_THAT(count({.wanted = 1000, .bytes = 2000}),
                HasSubstr("/endless/3: the layer has more than 2000 bytes"));
}

TEST_F(MapJob, AnAnswerIsRefusedBeforeItTakesMemory)
{
    const MapServer server;
    const long before = peakMemory();
    for (const char* name : {"/many", "/deep"})
        EXPECT_THROW(
            service().getMetaDataService()->getMapServiceLayers(nullptr, server.address() + name),
            EmbeddedHV::Exception);
    EXPECT_LT(peakMemory() - before, 256);
}

TEST_F(MapJob, CancellationEndsTheWaitForAService)
{
    const MapServer server;
    for (const char* name : {"/slow", "/trickle", "/astray", "/endless"}) {
        SCOPED_TRACE(name);
        RecordingListener listener;
        EXPECT_LT(
            cancelAfter(std::chrono::milliseconds(300),
                        readService(server.address() + name, 3) + " -> " + writeCsv("out.csv"),
                        listener),
            std::chrono::seconds(1));
        EXPECT_EQ(listener.ending, "cancel") << listener.errorText;
    }
}

} // namespace
