#include "geo/GeoFixture.h"

// Geometry as GeoJSON: which job each request runs, and how its failures are reported.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Export : public ScriptedMapDialog
{
protected:
    void SetUp() override
    {
        ScriptedMapDialog::SetUp();
        folder().put("roads.dbf");
        engine.setAnswer("getCoordinatesSystemInfo(WGS)", kWgs);
        engine.setAnswer("getCoordinatesSystemInfo(4326)", kWgs);
        engine.setAnswer("getCoordinatesSystemInfo(UTM)", kUtm);
        engine.setAnswer("getCoordinatesSystemInfo(32632)", kUtm);
    }

    /// The systems that the engine was asked about.
    Names systemsAsked() const { return engine.argumentsOf("getCoordinatesSystemInfo"); }

    static std::string reprojection(const std::string& number, const std::string& from,
                                    const std::string& to)
    {
        return "val f" + number +
               R"(Conf = {"type":"all","reprojectionFields":[{"inSR":{"csName":")" + from +
               R"("},"outSR":{"csName":")" + to + "\"}}]}\n";
    }

    std::string writing(const std::string& number) const
    {
        return "val f" + number + R"(Conf = {"dataDestination":")" + url("out.json") +
               R"(","dataModelDestination":")" + url("out.xml") + "\",\"type\":\"text/geojson\"}\n";
    }

    /// As a caller tells it: by name, by id, by both or not at all.
    struct System
    {
        const char* name;
        int wkid = 0;
    };

    bool exportShape(const System& from, const System& to)
    {
        return maps->getShapeGeoJSON(from.name, from.wkid, to.name, to.wkid, path("roads.shp"),
                                     path("out.xml"), path("out.json"));
    }

    bool exportPoints(const System& from, const System& to, const Names& fields)
    {
        return maps->getPointGeoJSON(from.name, from.wkid, to.name, to.wkid, dataset, "", fields,
                                     path("out.xml"), path("out.json"));
    }
    bool exportFile(const std::string& file)
    {
        return maps->getPointGeoJSON("CARTESIAN", 0, "", 0, kNoDataset, file, {"a", "b"},
                                     path("out.xml"), path("out.json"));
    }

    /// Has the job of the envelope leave these limits.
    void leaveEnvelope(WrittenRows& rows)
    {
        engine.setOutputs([&rows](const std::string&) { return &rows; });
    }

    static constexpr const char* kWgs =
        R"({"wkid":4326,"name":"WGS_84","wkt":"GEOGCS","isProjection":false})";
    static constexpr const char* kUtm =
        R"({"wkid":32632,"name":"UTM_32","wkt":"PROJCS","isProjection":true})";

    const std::shared_ptr<MemorySource> places = std::make_shared<MemorySource>(
        std::vector<VEXA_Variable>{text("town", 4), numeric("east"), numeric("north"),
                                   numeric("height")},
        std::vector<MemorySource::Row>{{"Bonn", 7.1, 50.7, 60.0}, {"Ulm", 10.0, 48.4, 478.0}});
    const LocallyUniqueID dataset = SvrDMDataset::Register(places);
};

constexpr const char* kNoAnswer = "none";

} // namespace

TEST_F(Export, ReprojectsAMapWhereATargetIsNamed)
{
    struct SystemCase
    {
        System from;
        System to;
        Names asked;
        std::string steps; ///< between reading and writing
        const char* chain;
    };
    const char* const plain = "read(f1Conf) -> write(f2Conf)";
    const char* const moved = "read(f1Conf) -> reprojection(f2Conf) -> write(f3Conf)";
    const char* const loose = "reprojection(f1Conf) -> write(f2Conf)";
    const std::string toUtm = reprojection("2", "WGS_84", "UTM_32");
    const std::string nothing = "val f1Conf = {\"type\":\"all\",\"reprojectionFields\":[{}]}\n";
    const SystemCase cases[] = {
        {{"WGS"}, {"UTM"}, {"WGS", "UTM"}, toUtm, moved},
        {{"WGS", 1}, {"x", 32632}, {"WGS", "x", "32632"}, toUtm, moved},
        {{"", 4326}, {"", 32632}, {"4326", "32632"}, "", plain},
        {{"WGS"}, {""}, {"WGS"}, "", plain},
        {{""}, {"", -1}, {}, "", plain},
        {{"CARTESIAN", 4326}, {"", 32632}, {}, "", plain},
        {{"CARTESIAN", 4326}, {"UTM"}, {}, nothing, loose},
        {{"WGS"}, {"x"}, {"WGS", "x"}, nothing, loose},
        {{"Cartesian"},
         {"UTM"},
         {"Cartesian", "UTM"},
         "val f2Conf = {\"type\":\"all\",\"reprojectionFields\":"
         "[{\"outSR\":{\"csName\":\"UTM_32\"}}]}\n",
         moved},
    };
    for (const auto& [from, to, asked, steps, chain] : cases) {
        SCOPED_TRACE(std::string(from.name) + " to " + to.name + " " + std::to_string(to.wkid));
        engine.clearCalls();
        EXPECT_TRUE(exportShape(from, to));
        EXPECT_EQ(systemsAsked(), asked);
        std::string read;
        if (chain != loose)
            read = R"(val f1Conf = {"geospatial":{"location":")" + url("roads.shp") +
                   "\",\"type\":\"shp\"}}\n";
        EXPECT_THAT(jobs(),
                    ElementsAre(read + steps + writing(chain == moved ? "3" : "2") + chain));
    }
}

TEST_F(Export, ReadsALayerAndTracesWhatWasWritten)
{
    engine.setScript([this](ScriptedJob& job) {
        folder().put("out.xml", "<DataModel/>");
        folder().put("out.json", "{}");
        job.listener().onSuccess();
    });
    EXPECT_TRUE(maps->getServiceGeoJSON("WGS", 0, "", 0, "http://maps", 2, path("out.xml"),
                                        path("out.json")));
    EXPECT_THAT(jobs(), ElementsAre(R"(val f1Conf = {"geospatial":{"location":"http://maps",)"
                                    R"("type":"mps","queryLayer":2}})"
                                    "\n" +
                                    writing("2") + "read(f1Conf) -> write(f2Conf)"));
    EXPECT_THAT(takeTraces(), UnorderedElementsAre("HvlJobText_getServiceGeoJSON.hvl",
                                                   "DataModelFile_getServiceGeoJSON.xml",
                                                   "GeoJSONFile_getServiceGeoJSON.json"));
}

TEST_F(Export, GathersThePointsOfADataset)
{
    const std::string envelope =
        R"("GeoEnvelope":{"leftUpperX":7.1,"leftUpperY":50.7,"rightLowerX":10.0,)"
        R"("rightLowerY":0.0})";
    const std::string wgs = R"("wkid":"4326","csname":"WGS_84","isProjected":false,)"
                            R"("wkt":"GEOGCS",)";
    const std::string utm = R"("wkid":"32632","csname":"UTM_32","isProjected":true,)"
                            R"("wkt":"PROJCS",)";
    struct PointCase
    {
        System from;
        System to;
        Names fields;
        std::string system;
        std::string reprojection;
    };
    const std::string toUtm = reprojection("4", "WGS_84", "UTM_32");
    const std::string toWgs = reprojection("4", "UTM_32", "WGS_84");
    const PointCase cases[] = {
        {{"WGS"}, {"UTM"}, {"east", "north"}, wgs + envelope, toUtm},
        {{"", 32632}, {"", 4326}, {"east", "north", "height"}, utm + envelope, toWgs},
        {{"WGS"}, {"x"}, {"east", "north"}, wgs + envelope, ""},
        {{"CARTESIAN", 4326}, {"UTM", 32632}, {"east", "north"}, "", ""},
    };
    for (const auto& [from, to, fields, system, steps] : cases) {
        SCOPED_TRACE(std::string(from.name) + " to " + to.name);
        engine.clearCalls();
        takeTraces();
        // The last limit is missing.
        WrittenRows limits({realField("leftUpperX"), realField("leftUpperY"),
                            realField("rightLowerX"), realField("rightLowerY")},
                           {{7.1, 50.7, 10.0, std::nullopt}});
        leaveEnvelope(limits);
        folder().put("out.xml", "<DataModel/>");
        folder().put("out.json", "{}");
        EXPECT_TRUE(exportPoints(from, to, fields)) << reason();
        EXPECT_EQ(limits.disposals, 1);
        const bool isSolid = fields.size() == 3;
        const std::string size = std::to_string(fields.size());
        EXPECT_THAT(
            jobs(),
            ElementsAre(
                R"(val f1Conf = {"dataSource":"pointData"})"
                "\nval f2Conf = {\"output\":["
                R"({"input":"east","function":"min","outName":"leftUpperX"},)"
                R"({"input":"north","function":"max","outName":"leftUpperY"},)"
                R"({"input":"east","function":"max","outName":"rightLowerX"},)"
                R"({"input":"north","function":"min","outName":"rightLowerY"}]})"
                "\nval f3Conf = {\"dataDestination\":\"aggpointdata.csv\","
                R"("dataModelDestination":"aggpointdatamodel.xml","type":"text/csv"})"
                "\nread(f1Conf) -> aggregate(f2Conf) -> write(f3Conf)",
                "val f1Conf = {\"dataSource\":\"pointData\"}\n"
                "val f2Lambda = ctx => x => (\"pointCoord\", [x.east,x.north" +
                    std::string(isSolid ? ",x.height" : "") +
                    "])\nval f3Conf = {\"fields\":[{\"name\":\"pointCoord\",\"Geo\":"
                    R"({"type":"Point","coordinates":")" +
                    size + "\"" + (system.empty() ? "" : ",") + system + "}}]}\n" + steps +
                    writing(steps.empty() ? "4" : "5") +
                    "read(f1Conf) -> deriveField(_, f2Lambda) -> updateDataModel(f3Conf) -> " +
                    (steps.empty() ? "" : "reprojection(f4Conf) -> ") +
                    (steps.empty() ? "write(f4Conf)" : "write(f5Conf)")));
        EXPECT_THAT(takeTraces(),
                    testing::IsSupersetOf(
                        {"HvlJobText_getGeoEnvelope.hvl", "HvlJobText_getPointGeoJSON.hvl",
                         "DataModelFile_getPointGeoJSON.xml", "GeoJSONFile_getPointGeoJSON.json"}));
    }
}

TEST_F(Export, PullsTheCasesOnceForEachJob)
{
    std::vector<int> pulled;
    WrittenRows limits({}, {});
    leaveEnvelope(limits);
    engine.setScript([&pulled](ScriptedJob& job) {
        pulled.push_back(job.pull("pointData"));
        job.listener().onSuccess();
    });
    EXPECT_TRUE(exportPoints({"WGS"}, {""}, {"north", "east"}));
    EXPECT_THAT(pulled, ElementsAre(2, 2));

    // From a file as well, whose name needs no ending.
    folder().put("places.csv", "a,b\n1,2\n3,4\n5,6\n");
    EXPECT_TRUE(exportFile(path("places.csv")));
    EXPECT_THAT(pulled, ElementsAre(2, 2, 3, 3));
}

TEST_F(Export, RefusesPointsThatAreNone)
{
    const std::pair<const char*, Names> cases[] = {
        {"WGS", {}},
        {"WGS", {"east"}},
        {"WGS", {"east", "north", "height", "east"}},
        {"x", {"east", "north"}},
        {"WGS", {"east", "town"}},
        {"CARTESIAN", {"east", "north", "depth"}},
    };
    for (const auto& [from, fields] : cases) {
        EXPECT_FALSE(exportPoints({from}, {""}, fields));
        EXPECT_EQ(reason(), "") << from;
    }
    EXPECT_FALSE(exportFile(path("missing.csv")));
    EXPECT_THAT(reason(), testing::HasSubstr("missing.csv"));
    EXPECT_FALSE(exportFile(""));
    EXPECT_EQ(reason(), "|Cannot read the selected file.|");
    EXPECT_THAT(jobs(), IsEmpty());
    EXPECT_FALSE(maps->getPointGeoJSON("CARTESIAN", 0, "", 0, dataset + 1, "", {"east", "north"},
                                       path("out.xml"), path("out.json")));
    EXPECT_THAT(reason(), testing::HasSubstr("there is no open dataset"));
}

TEST_F(Export, ExplainsAFailureThatTheEngineDoesNot)
{
    struct FailureCase
    {
        Fault fault;
        bool fails;
        const char* ofShape;
        const char* ofLayer;
    };
    const FailureCase cases[] = {
        {Fault::Standard, false, "|Cannot read the selected file.|", "|Shape source is invalid.|"},
        {Fault::Engine, false, "|scripted|", "|scripted|"},
        {Fault::None, true, "ID|text|detail", "ID|text|detail"},
    };
    for (const auto& [fault, fails, ofShape, ofLayer] : cases) {
        engine.throwAt("execute", fault);
        if (fails)
            engine.setScript(
                [](ScriptedJob& job) { job.listener().onError("ID", "text", "detail"); });
        EXPECT_FALSE(exportShape({"WGS"}, {""}));
        EXPECT_EQ(reason(), ofShape);
        EXPECT_FALSE(
            maps->getServiceGeoJSON("", 0, "", 0, "u", 0, path("out.xml"), path("out.json")));
        EXPECT_EQ(reason(), ofLayer);
        engine.clearCalls();
        EXPECT_FALSE(exportPoints({"WGS"}, {""}, {"east", "north"}));
        EXPECT_EQ(reason(), ofLayer) << "points have no file of shapes";
        EXPECT_EQ(jobs().size(), 1U) << "without an envelope there is no map";
    }
    EXPECT_FALSE(maps->getShapeGeoJSON("", 0, "", 0, path("missing.shp"), "", ""));
    EXPECT_EQ(reason(), "|A corresponding dbf file was not found|");
}

TEST_F(Export, EnvelopeTakesWhatItGets)
{
    const auto second = [this] {
        const Names all = jobs();
        return all.size() == 2 ? all.back() : std::string(kNoAnswer);
    };
    const auto exportAll = [this] { return exportPoints({"WGS"}, {""}, {"east", "north"}); };
    engine.setScript([](ScriptedJob& job) { job.listener().onSuccess(); });
    EXPECT_FALSE(exportAll()) << "no file of limits";
    EXPECT_EQ(reason(), "");
    EXPECT_EQ(second(), kNoAnswer);

    engine.clearCalls();
    // Texts and fields that are not there count as little as records that are not.
    WrittenRows odd({textField("leftUpperX"), realField("rightLowerX")}, {{"a", 3.0}});
    leaveEnvelope(odd);
    EXPECT_TRUE(exportAll());
    EXPECT_THAT(second(), testing::HasSubstr(R"({"leftUpperX":0.0,"leftUpperY":0.0,)"
                                             R"("rightLowerX":3.0,"rightLowerY":0.0})"));
    engine.clearCalls();
    WrittenRows empty({realField("leftUpperX")}, {});
    leaveEnvelope(empty);
    EXPECT_TRUE(exportAll());
    EXPECT_THAT(second(), testing::HasSubstr(R"({"leftUpperX":0.0,)"));
}
