#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include <nlohmann/json.hpp>

#include "geo/GeoFixture.h"
#include "support/ProcessorClock.h"

// The requests on the real engine and real files, up to what they write.

namespace {

using Json = nlohmann::json;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// A server that takes connections and never answers.
class SilentServer
{
public:
    SilentServer() : _socket(socket(AF_INET, SOCK_STREAM, 0))
    {
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof place;
        auto* const address = reinterpret_cast<sockaddr*>(&place);
        EXPECT_EQ(bind(_socket, address, size), 0);
        EXPECT_EQ(listen(_socket, 5), 0);
        getsockname(_socket, address, &size);
        _port = ntohs(place.sin_port);
    }
    ~SilentServer() { close(_socket); }
    SilentServer(const SilentServer&) = delete;
    SilentServer& operator=(const SilentServer&) = delete;

    std::string address() const { return "http://127.0.0.1:" + std::to_string(_port); }

private:
    int _socket;
    int _port = 0;
};

class RealMaps : public MapDialog
{
protected:
    void SetUp() override
    {
        MapDialog::SetUp();
        for (const char* ending : {".shp", ".shx", ".dbf", ".prj", ".cpg"})
            std::filesystem::copy_file(std::filesystem::path(std::getenv("HV_TEST_DATA")) /
                                           (std::string("islands") + ending),
                                       folder().path / (std::string("islands") + ending));
    }

    bool exportIslands(const std::string& from, const std::string& to, int toWkid = 0)
    {
        return maps->getShapeGeoJSON(from, 0, to, toWkid, path("islands.shp"), path("out.xml"),
                                     path("out.json"));
    }

    bool exportPoints(const std::string& from, int fromWkid, int toWkid,
                      const Names& fields = {"east", "north"})
    {
        return maps->getPointGeoJSON(from, fromWkid, "", toWkid, kNoDataset, path("places.csv"),
                                     fields, path("out.xml"), path("out.json"));
    }

    /// The features that the last request wrote.
    Json features() const { return Json::parse(folder().read("out.json")).at("features"); }
    CFMetaData model() const { return CFMetaData(folder().read("out.xml")); }

    static const CFGeo* shapesOf(const CFMetaData& model)
    {
        for (std::size_t i = 0; i < model.FieldCount(); ++i)
            if (model.GetField(i)->GetGeo() != nullptr)
                return model.GetField(i)->GetGeo();
        return nullptr;
    }
};

} // namespace

TEST_F(RealMaps, TellWhatAShapeFileHolds)
{
    std::string xml;
    ASSERT_TRUE(maps->validateShapeSource(path("islands.shp"), xml)) << reason();
    const CFMetaData fields(xml);
    ASSERT_NE(fields.GetField("ID"), nullptr);
    EXPECT_EQ(fields.GetField("ID")->GetStorage(), CFField::Integer);
    EXPECT_EQ(fields.GetField("KEY")->GetStorage(), CFField::String);
    const CFGeo* const shapes = shapesOf(fields);
    ASSERT_NE(shapes, nullptr) << xml;
    EXPECT_EQ(shapes->GetType(), CFGeo::MultiPolygon);
    EXPECT_EQ(shapes->GetWkid(), 4326);

    ASSERT_TRUE(ZipDir(path("islands.zip"), folder().folder));
    std::string unpacked;
    EXPECT_TRUE(maps->validateShapeSource(path("islands.zip"), unpacked));
    EXPECT_EQ(unpacked, xml);

    folder().put("broken.shp", "no shapes");
    folder().put("broken.dbf", "no table");
    EXPECT_FALSE(maps->validateShapeSource(path("broken.shp"), xml));
    EXPECT_EQ(reason(), "|Cannot read the selected file.|");
    EXPECT_FALSE(maps->validateServiceLayer("http://127.0.0.1:9/none", 0, xml));
    EXPECT_EQ(reason(), "|Shape source is invalid.|");
}

TEST_F(RealMaps, WriteAShapeFileAsGeoJson)
{
    ASSERT_TRUE(exportIslands("", "")) << reason();
    ASSERT_EQ(features().size(), 4U);
    const Json torgersen = features()[2];
    EXPECT_EQ(torgersen.at("properties").at("KEY"), "Torgersen");
    EXPECT_EQ(torgersen.at("geometry").at("type"), "Polygon");
    const Json corner = torgersen.at("geometry").at("coordinates")[0][0];
    EXPECT_THAT(corner[0].get<double>(), DoubleNear(-64.08, 0.01));
    EXPECT_THAT(corner[1].get<double>(), DoubleNear(-64.77, 0.01));
    EXPECT_EQ(features()[0].at("geometry").at("coordinates").size(), 3U) << "a group of islands";

    // South polar stereographic, in metres from the pole.
    ASSERT_TRUE(exportIslands("", "WGS 84 / Antarctic Polar Stereographic")) << reason();
    const Json moved = features()[2].at("geometry").at("coordinates")[0][0];
    EXPECT_THAT(moved[0].get<double>(), DoubleNear(-2.49e6, 5e4));
    EXPECT_THAT(moved[1].get<double>(), DoubleNear(1.21e6, 5e4));
    ASSERT_NE(shapesOf(model()), nullptr);
    EXPECT_EQ(shapesOf(model())->GetWkid(), 3031);

    // A target that is not known, or not possible, is no map in the system of the source.
    for (const auto& [from, to] : {std::pair{"", "no such system"}, {"CARTESIAN", "WGS 84"}}) {
        EXPECT_FALSE(exportIslands(from, to));
        EXPECT_THAT(reason(), HasSubstr("reprojection"));
    }
}

TEST_F(RealMaps, WriteThePointsOfADataset)
{
    folder().put("places.csv", "place,east,north,height\nhere,-64.05,-64.77,8\nthere,-64,-65,\n");
    ASSERT_TRUE(exportPoints("", 4326, -1)) << reason();
    ASSERT_EQ(features().size(), 2U);
    EXPECT_EQ(features()[0].at("geometry"),
              Json::parse(R"({"type":"Point","coordinates":[-64.05,-64.77]})"));
    EXPECT_EQ(features()[1].at("properties").at("place"), "there");
    const CFMetaData written = model();
    const CFGeo* const points = shapesOf(written);
    ASSERT_NE(points, nullptr);
    EXPECT_EQ(points->GetType(), CFGeo::Point);
    ASSERT_TRUE(points->GetEnvelope());
    EXPECT_EQ(*points->GetEnvelope(), (CFGeo::Envelope{-64.05, -64.77, -64, -65}));

    ASSERT_TRUE(exportPoints("", 4326, 3031)) << reason();
    EXPECT_THAT(features()[0].at("geometry").at("coordinates")[0].get<double>(),
                DoubleNear(-2.49e6, 5e4));
    ASSERT_TRUE(exportPoints("CARTESIAN", 0, -1, {"east", "north", "height"})) << reason();
    EXPECT_EQ(features()[0].at("geometry").at("coordinates").size(), 3U);
}

TEST_F(RealMaps, MatchTheirKeysWithThoseOfADataset)
{
    folder().put("sizes.csv",
                 "island,number,size\nDream,2,1\nDream,2,2\nBiscoe,1,3\nElsewhere,9.5,4\n,,5\n");
    struct MatchCase
    {
        Names mapKeys;
        Names dataKeys;
        int maxRows;
        int count;
        KeyRows ofMap;
        KeyRows ofData;
    };
    const MatchCase cases[] = {
        {{"KEY"}, {"island"}, -1, 2, {{"Anvers"}, {"Torgersen"}}, {{"Elsewhere"}}},
        // Whole numbers of the map, real ones of the data.
        {{"ID"}, {"number"}, -1, 2, {{"3"}, {"4"}}, {{"9.5"}}},
        {{"KEY", "ID"},
         {"island", "number"},
         -1,
         2,
         {{"Anvers", "4"}, {"Torgersen", "3"}},
         {{"Elsewhere", "9.5"}}},
        {{"KEY", "ID"},
         {"island", "size"},
         -1,
         1,
         {{"Anvers", "4"}, {"Biscoe", "1"}, {"Torgersen", "3"}},
         {{"Biscoe", "3"}, {"Dream", "1"}, {"Elsewhere", "4"}}},
    };
    for (const auto& [mapKeys, dataKeys, maxRows, count, ofMap, ofData] : cases) {
        SCOPED_TRACE(mapKeys.front() + " " + dataKeys.back());
        KeyRows mapUnmatched;
        KeyRows dataUnmatched;
        int matched = -1;
        ASSERT_TRUE(maps->matchShapeKeys(path("islands.shp"), mapKeys, mapUnmatched, kNoDataset,
                                         path("sizes.csv"), dataKeys, dataUnmatched, maxRows,
                                         matched))
            << reason();
        EXPECT_EQ(matched, count);
        EXPECT_THAT(mapUnmatched, testing::UnorderedElementsAreArray(ofMap));
        EXPECT_THAT(dataUnmatched, testing::UnorderedElementsAreArray(ofData));
    }
    KeyRows mapUnmatched;
    KeyRows dataUnmatched;
    int matched = -1;
    const auto match = [&](const char* key, const char* variable, int maxRows) {
        return maps->matchShapeKeys(path("islands.shp"), {key}, mapUnmatched, kNoDataset,
                                    path("sizes.csv"), {variable}, dataUnmatched, maxRows, matched);
    };
    EXPECT_TRUE(match("KEY", "island", 0));
    EXPECT_EQ(mapUnmatched.size(), 1U);
    for (const auto& [key, variable] :
         {std::pair{"KEI", "island"}, {"KEY", "isle"}, {"ID", "island"}}) {
        EXPECT_FALSE(match(key, variable, -1)) << key;
        EXPECT_NE(reason(), "");
    }
    EXPECT_FALSE(maps->matchServiceKeys("http://127.0.0.1:9/none", 0, {"KEY"}, mapUnmatched,
                                        kNoDataset, path("sizes.csv"), {"island"}, dataUnmatched,
                                        -1, matched));
    EXPECT_EQ(matched, 0);
}

TEST_F(RealMaps, ACancelEndsTheWaitForAService)
{
    using Clock = std::chrono::steady_clock;
    const SilentServer server;
    folder().put("sizes.csv", "island\nDream\n");
    const auto request = [&](int number) {
        std::string answer;
        KeyRows unmatched;
        int matched = 0;
        switch (number) {
        case 0:
            return maps->validateMapService(server.address(), answer);
        case 1:
            return maps->validateServiceLayer(server.address(), 0, answer);
        case 2:
            return maps->getServiceGeoJSON("", 0, "", 0, server.address(), 0, path("out.xml"),
                                           path("out.json"));
        default:
            return maps->matchServiceKeys(server.address(), 0, {"KEY"}, unmatched, kNoDataset,
                                          path("sizes.csv"), {"island"}, unmatched, -1, matched);
        }
    };
    for (int number = 0; number < 4; ++number) {
        SCOPED_TRACE(number);
        // A dialog that was cancelled stays so.
        maps.emplace();
        Clock::time_point cancelled;
        std::thread user([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            cancelled = Clock::now();
            maps->cancelExecution();
        });
        request(number);
        user.join();
        EXPECT_TRUE(maps->isStopProcessor());
        EXPECT_LT(Clock::now() - cancelled, kLongestStop);
        EXPECT_FALSE(std::filesystem::exists(folder().path / "out.json"));
    }
}
