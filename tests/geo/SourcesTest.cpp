#include <functional>
#include <regex>

#include "geo/GeoFixture.h"

// Where geometry comes from: shape files, archives of them, and map services.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Sources : public ScriptedMapDialog
{
protected:
    /// The jobs that the engine was asked about, each with the name of its container.
    Names questions() const
    {
        static const std::regex place(R"("uri":"file:///[^"]*")");
        Names texts;
        for (const EngineCall& call : engine.calls())
            if (call.name == "getMetadata")
                texts.push_back(std::regex_replace(call.argument, place, R"("uri":"*")"));
        return texts;
    }

    /// What the engine reads of the last question.
    std::string locationAsked() const
    {
        const std::string mark = R"("location":")";
        const std::string text = questions().back();
        const std::size_t begin = text.find(mark) + mark.size();
        return text.substr(begin, text.find('"', begin) - begin);
    }
};

constexpr const char* kNoShape = "|The selected zip file does not contain a shape file.|";
constexpr const char* kNoDbf = "|A corresponding dbf file was not found|";

} // namespace

TEST_F(Sources, FindTheShapeFileAndItsCompanion)
{
    for (const char* file : {"roads.dbf", "a.b/town.dbf", "no dot.txdbf", "bare.dbf"})
        folder().put(file);
    putZip("map.zip", {"map.shp", "map.dbf"});
    putZip("UPPER.ZIP", {"UPPER.shp", "UPPER.dbf"});
    putZip("Mixed.Zip", {"Mixed.shp", "Mixed.dbf"});
    putZip("renamed.zip", {"map.shp", "map.dbf"});
    putZip("case.zip", {"Case.shp", "Case.dbf"});
    putZip("deep.zip", {"deep/deep.shp", "deep/deep.dbf"});
    putZip("nodbf.zip", {"nodbf.shp"});
    putZip("unsafe.zip", {"unsafe.shp", "unsafe.dbf", "../out"});
    folder().put("broken.zip", "no archive");
    struct PathCase
    {
        const char* file;
        const char* shape; ///< its end; empty if it is refused
        const char* reason;
    };
    const PathCase cases[] = {
        {"roads.shp", "/roads.shp", ""}, // its own presence is the engine's to find out
        {"roads.SHP", "/roads.SHP", ""},
        {"a.b\\town.shp", "/a.b/town.shp", ""},
        {"no dot.txshp", "/no dot.txshp", ""},
        {"missing.shp", "", kNoDbf},
        {"map.zip", "/map.shp", ""},
        {"UPPER.ZIP", "/UPPER.shp", ""},
        {"Mixed.Zip", "/Mixed.shp", ""},
        {"renamed.zip", "", kNoShape},
        {"case.zip", "", kNoShape},
        {"deep.zip", "", kNoShape},
        {"nodbf.zip", "", kNoDbf},
        {"unsafe.zip", "", kNoShape},
        {"broken.zip", "", kNoShape},
        {"missing.zip", "", kNoShape},
    };
    for (const auto& [file, shape, expected] : cases) {
        SCOPED_TRACE(file);
        std::string model = "before";
        EXPECT_EQ(maps->validateShapeSource(path(file), model), *shape != '\0');
        EXPECT_EQ(reason(), expected);
        EXPECT_EQ(model, *shape ? "<DataModel/>" : "before");
        if (*shape) {
            EXPECT_THAT(locationAsked(), testing::EndsWith(shape));
        }
    }
    EXPECT_THAT(jobs(), IsEmpty()) << "a data model needs no job";

    // Too short for an ending, and for a name to replace one in.
    for (const char* text : {"", "a", "ab", "abc", "zip"}) {
        std::string model;
        EXPECT_FALSE(maps->validateShapeSource(text, model));
        EXPECT_EQ(reason(), kNoDbf) << text;
    }
}

TEST_F(Sources, AnArchiveIsUnpackedOnce)
{
    putZip("map.zip", {"map.shp", "map.dbf"});
    std::string model;
    ASSERT_TRUE(maps->validateShapeSource(path("map.zip"), model));
    const std::string first = locationAsked();
    EXPECT_TRUE(std::filesystem::exists(first.substr(std::string("file://").size())));

    putZip("map.zip", {"other"});
    ASSERT_TRUE(maps->validateShapeSource(path("map.zip"), model));
    EXPECT_EQ(locationAsked(), first);
    // Another object knows nothing of that.
    EXPECT_FALSE(HVInteractiveSTEM().validateShapeSource(path("map.zip"), model));

    const auto unpacked = std::filesystem::path(first.substr(std::string("file://").size()));
    maps.reset();
    EXPECT_FALSE(std::filesystem::exists(unpacked.parent_path()));
    maps.emplace();
}

TEST_F(Sources, AskTheEngineAboutOneRecord)
{
    folder().put("roads.dbf");
    std::string model = "before";
    ASSERT_TRUE(maps->validateShapeSource(path("roads.shp"), model));
    EXPECT_EQ(model, "<DataModel/>");
    EXPECT_THAT(takeTraces(), UnorderedElementsAre("HvlJobText_validateShapeSource.hvl",
                                                   "DataModelContent_validateShapeSource.xml"));
    ASSERT_TRUE(maps->validateServiceLayer("http://maps/ü", 7, model));
    EXPECT_THAT(takeTraces(), UnorderedElementsAre("HvlJobText_validateServiceLayer.hvl",
                                                   "DataModelContent_validateServiceLayer.xml"));
    const Names asked = questions();
    ASSERT_EQ(asked.size(), 2U);
    const std::string sources[] = {R"({"location":")" + url("roads.shp") + R"(","type":"shp"})",
                                   R"({"location":"http://maps/ü","type":"mps","queryLayer":7})"};
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_EQ(asked[i],
                  R"(val f1Conf = {"geospatial":)" + sources[i] +
                      R"(,"maxRecordsCount":1})"
                      "\nval f2Conf = {\"normalizeDataModel\":true}\n"
                      R"(val f2Conf2 = {"export":true,"name":"outputDataModel","uri":"*"})"
                      "\nread(f1Conf) -> dataModelBuilder(f2Conf, f2Conf2);"
                      "outputDataModel");

    engine.setMetadata("");
    EXPECT_FALSE(maps->validateShapeSource(path("roads.shp"), model));
    EXPECT_EQ(model, "");
    EXPECT_EQ(reason(), "|Cannot read the selected file.|");
    EXPECT_FALSE(maps->validateServiceLayer("http://maps", 0, model));
    EXPECT_EQ(reason(), "|Shape source is invalid.|");
}

TEST_F(Sources, EachRequestForgetsTheFailureOfTheOneBefore)
{
    folder().put("roads.dbf");
    engine.setAnswer("getCoordinatesSystemInfo(WGS)",
                     R"({"wkid":1,"name":"WGS","wkt":"W","isProjection":false})");
    engine.setScript([](ScriptedJob& job) { job.listener().onError("ID", "text", "detail"); });
    std::string model;
    const std::function<bool()> requests[] = {
        [&] { return maps->validateShapeSource(path("roads.shp"), model); },
        [&] { return maps->validateServiceLayer("http://maps", 0, model); },
        [&] { return !maps->validateMapService("", model); },
    };
    for (const auto& request : requests) {
        EXPECT_FALSE(maps->getShapeGeoJSON("WGS", 0, "WGS", 0, path("roads.shp"), "m", "g"));
        ASSERT_EQ(reason(), "ID|text|detail");
        EXPECT_TRUE(request());
        EXPECT_EQ(reason(), "");
    }
}

TEST_F(Sources, AskAMapServiceForItsLayers)
{
    engine.setAnswer("getMapServiceLayers(http://maps)", "[1]");
    struct ServiceCase
    {
        const char* url;
        Fault fault;
        bool result;
        const char* layers;
        std::set<std::string> traces;
    };
    const ServiceCase cases[] = {
        {"http://maps", Fault::None, true, "[1]", {"LayerInfoContent_validateMapService.json"}},
        {"http://elsewhere", Fault::None, false, "", {}},
        {"", Fault::None, false, "", {}},
        {"http://maps", Fault::Java, true, "", {}},
    };
    for (const auto& [address, fault, result, layers, traces] : cases) {
        SCOPED_TRACE(address);
        engine.throwAt("getMapServiceLayers", fault);
        std::string answer = "before";
        EXPECT_EQ(maps->validateMapService(address, answer), result);
        EXPECT_EQ(answer, layers);
        EXPECT_EQ(takeTraces(), traces);
        EXPECT_EQ(reason(), "");
    }
}
