#include <chrono>
#include <thread>

#include <nlohmann/json.hpp>

#include "EngineException.h"
#include "MetadataService.h"
#include "engine/EngineFixture.h"
#include "engine/MapSamples.h"
#include "support/ProcessorClock.h"

// What the engine knows of coordinate systems and map services, without a job.

namespace {

using namespace EngineTest;
using nlohmann::json;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;

class MapQuestion : public EngineFixture
{
protected:
    EmbeddedHV::MetadataService& metadata = *service().getMetaDataService();

    /// What a question answers, or what it throws.
    template <class Question>
    static std::string answer(Question question)
    {
        try {
            return question();
        } catch (const EmbeddedHV::Exception& exception) {
            return exception.getMessage();
        }
    }
    std::vector<json> recommended(const std::string& areas, int count)
    {
        std::vector<std::string> texts;
        metadata.getRecommendPCSs(nullptr, areas, count, texts);
        std::vector<json> result;
        for (const std::string& text : texts)
            result.push_back(json::parse(text));
        return result;
    }
};

TEST_F(MapQuestion, ASystemIsFoundByNameAndById)
{
    struct Case
    {
        const char* name; ///< null: by wkid
        int wkid;
        const char* found;
        bool isProjected;
    };
    const Case cases[] = {
        {"WGS 84", 4326, "WGS 84", false},
        {"etrs89 / utm zone 33n", 25833, "ETRS89 / UTM zone 33N", true},
        {"GCS_WGS_1984", 4326, "WGS 84", false},
        {nullptr, 3857, "WGS 84 / Pseudo-Mercator", true},
        {nullptr, 54030, "World_Robinson", true},
        {nullptr, 102100, "WGS_1984_Web_Mercator_Auxiliary_Sphere", true},
        // Deprecated systems: one that has its name for itself, and one that has not.
        {nullptr, 3785, "Popular Visualisation CRS / Mercator", true},
        {"Popular Visualisation CRS / Mercator", 3785, "Popular Visualisation CRS / Mercator",
         true},
        {"SAD69", 4618, "SAD69", false},
        {nullptr, 4291, "SAD69 (4291)", false},
        {"SAD69 (4291)", 4291, "SAD69 (4291)", false},
    };
    for (const Case& row : cases) {
        const json info =
            json::parse(row.name ? metadata.getCoordinatesSystemInfo(nullptr, std::string(row.name))
                                 : metadata.getCoordinatesSystemInfo(nullptr, row.wkid));
        EXPECT_EQ(info["wkid"], row.wkid);
        EXPECT_EQ(info["name"], row.found);
        EXPECT_EQ(info["isProjection"], row.isProjected);
        EXPECT_THAT(info["wkt"].get<std::string>(),
                    testing::StartsWith(row.isProjected ? "PROJCS[" : "GEOGCS["));
    }
    for (const int wkid : {0, -1, 5773, 999999}) // the third is of heights
        EXPECT_THAT(answer([&] { return metadata.getCoordinatesSystemInfo(nullptr, wkid); }),
                    HasSubstr("no geographic or projected coordinate system with the id " +
                              std::to_string(wkid)));
    for (const std::string name : {"none such", "WGS", "%", "SAD69 (4618)"})
        EXPECT_THAT(answer([&] { return metadata.getCoordinatesSystemInfo(nullptr, name); }),
                    HasSubstr("there is no coordinate system \"" + name + "\""));
}

TEST_F(MapQuestion, NamesAreSortedByWhatTheySystemsAre)
{
    std::vector<std::string> degrees;
    std::vector<std::string> planes{"what was there"};
    metadata.getGeographics(nullptr, degrees);
    metadata.getProjections(nullptr, planes);
    EXPECT_THAT(degrees, Contains("WGS 84"));
    EXPECT_THAT(degrees, Not(Contains("WGS 84 / Pseudo-Mercator")));
    EXPECT_THAT(planes, Contains("WGS 84 / Pseudo-Mercator"));
    EXPECT_THAT(planes, Not(Contains("what was there")));
    EXPECT_TRUE(std::is_sorted(planes.begin(), planes.end()));
}

TEST_F(MapQuestion, RecommendedSystemsHoldTheAreaTheSmallestFirst)
{
    constexpr const char* kAreas =
        R"({"7": {"leftUpperX": 13.2, "leftUpperY": 52.6, "rightLowerX": 13.6, "rightLowerY": 52.4},
            "-2": {"leftUpperX": 177, "leftUpperY": -17, "rightLowerX": -179, "rightLowerY": -18},
            "3": {"leftUpperX": -180, "leftUpperY": 90, "rightLowerX": 180, "rightLowerY": -90}})";
    const std::vector<json> answers = recommended(kAreas, 3);
    ASSERT_EQ(answers.size(), 3U);
    const json& berlin = answers[0]["7"];
    ASSERT_EQ(berlin.size(), 3U);
    EXPECT_THAT(berlin.dump(), HasSubstr("Soldner Berlin"));
    const json& fiji = answers[1]["-2"];
    ASSERT_FALSE(fiji.empty());
    EXPECT_THAT(fiji[0]["name"].get<std::string>(), HasSubstr("Fiji"));
    EXPECT_THAT(answers[2]["3"].dump(), HasSubstr("World"));
    for (const json& system : berlin) {
        EXPECT_GT(system["wkid"], 0);
        for (const json& method : system["trans_methods"]) {
            ASSERT_EQ(method.size(), 1U);
            EXPECT_THAT((std::vector<std::string>{"forward", "inverse"}),
                        Contains(method.begin().value()));
        }
    }
    EXPECT_EQ(recommended(kAreas, 0)[0], json({{"7", json::array()}}));
    std::vector<std::string> usual;
    metadata.getRecommendPCSs(nullptr, kAreas, usual);
    EXPECT_EQ(json::parse(usual[0])["7"].size(), 10U);
}

TEST_F(MapQuestion, AMethodTellsItsDirection)
{
    // The system's datum is the older one, from which the method leads.
    const json systems = recommended(
        R"({"1": {"leftUpperX": 4, "leftUpperY": 52, "rightLowerX": 5, "rightLowerY": 51.5}})",
        -1)[0]["1"];
    bool found = false;
    for (const json& system : systems)
        if (system["name"] == "ED50 / UTM zone 31N")
            for (const json& method : system["trans_methods"])
                found = found || method.value("ED50 to WGS 84 (1)", "") == "inverse";
    EXPECT_TRUE(found);
}

TEST_F(MapQuestion, AWrongAreaIsRefused)
{
    const std::pair<const char*, const char*> cases[] = {
        {"", "not a JSON object"},
        {"[]", "not a JSON object"},
        {R"({"1": 2})", "the area 1 is not an object"},
        {R"({"1": {"leftUpperX": 0, "leftUpperY": 1, "rightLowerX": 1}})", "\"rightLowerY\" is no"},
        {R"({"1": {"leftUpperX": 5e5, "leftUpperY": 1, "rightLowerX": 1, "rightLowerY": 0}})",
         "\"leftUpperX\" is not a number of degrees"},
        {R"({"1": {"leftUpperX": 0, "leftUpperY": 0, "rightLowerX": 1, "rightLowerY": 1}})",
         "upper side below"},
    };
    for (const auto& [areas, text] : cases)
        EXPECT_THAT(answer([&, input = areas] {
                        recommended(input, 1);
                        return std::string();
                    }),
                    HasSubstr(text));
}

TEST_F(MapQuestion, AServiceTellsItsLayers)
{
    const MapServer server;
    EXPECT_EQ(metadata.getMapServiceLayers(nullptr, server.address() + "/pages/"),
              R"([{"value":"0","name":"all","keys":"","description":"","features":"",)"
              R"("subLayers":[3]},{"value":"3","name":"towns","keys":"town,kind",)"
              R"("description":"Towns","features":"Point"}])");
    write("service.json", R"({"layers": [{"id": 1, "name": "a"}]})");
    const char* const alone =
        R"([{"value":"1","name":"a","keys":"","description":"","features":""}])";
    for (const char* name : {"", "/", "/service.json"})
        EXPECT_EQ(metadata.getMapServiceLayers(nullptr, expanded("$DIR") + name), alone) << name;
    const std::pair<std::string, const char*> faults[] = {
        {server.address() + "/pages/3", "lists no layers"},
        {server.address() + "/fault", "Token Required"},
        {server.address() + "/deep", "nested deeper than 64 levels"},
        {server.address() + "/many", "holds more than 1000000 values"},
        {"http://127.0.0.1:1/a", "the service does not answer"},
        {"", "only http, https and file"},
    };
    for (const auto& [url, text] : faults)
        EXPECT_THAT(
            answer([&, address = url] { return metadata.getMapServiceLayers(nullptr, address); }),
            HasSubstr(text));
    write("service.json", R"({"layers": [{"name": "a"}]})");
    EXPECT_THAT(answer([&] { return metadata.getMapServiceLayers(nullptr, expanded("$DIR")); }),
                HasSubstr("names a layer without an id"));
}

TEST_F(MapQuestion, AStopEndsAQuestionToAService)
{
    using Clock = std::chrono::steady_clock;
    const MapServer server;
    auto& questions = dynamic_cast<EmbeddedHV::StoppableQuestions&>(metadata);
    for (const char* name : {"/slow", "/trickle", "/astray"}) {
        SCOPED_TRACE(name);
        const Clock::time_point stop = Clock::now() + std::chrono::milliseconds(300);
        questions.setStop([stop] { return Clock::now() > stop; });
        EXPECT_THAT(
            answer([&] { return metadata.getMapServiceLayers(nullptr, server.address() + name); }),
            HasSubstr("stopped"));
        EXPECT_GT(Clock::now(), stop);
        EXPECT_LT(Clock::now() - stop, kLongestStop);
    }
    questions.setStop({});
    EXPECT_THAT(metadata.getMapServiceLayers(nullptr, server.address() + "/pages"),
                HasSubstr("towns"));
}

} // namespace
