#include <thread>

#include "geo/GeoFixture.h"
#include "support/HVSimpleFile.h"
#include "support/HostScopes.h"

// How well keys match: the four jobs of a request, and what it reads of them.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class Matching : public ScriptedMapDialog
{
protected:
    void SetUp() override
    {
        ScriptedMapDialog::SetUp();
        folder().put("roads.dbf");
    }

    /// Has the first job leave a map of these fields, and the others these rows in turn.
    void leave(const std::vector<CFField>& mapFields, std::vector<WrittenRows*> rows)
    {
        CFMetaData model;
        for (const CFField& field : mapFields)
            model.AppendField(field);
        std::string xml;
        model.ExportXMLDoc(xml);
        const std::filesystem::path place =
            ExtNameStr(HVSimpleFile::GetAnalyticDefaultDir()).GetNative();
        std::filesystem::create_directories(place);
        engine.setScript([this, xml, place](ScriptedJob& job) {
            if (jobs().size() == 1)
                std::ofstream(place / "shapedatamodel.xml") << xml;
            else
                job.pull("contextData");
            job.listener().onSuccess();
        });
        engine.setOutputs([this, rows](const std::string&) -> EmbeddedHV::RowDataIterator* {
            const std::size_t question = jobs().size() - 2;
            return question < rows.size() ? rows[question] : nullptr;
        });
    }

    bool match(const Names& mapKeys, const Names& dataKeys, int maxRows = -1)
    {
        engine.clearCalls();
        return maps->matchShapeKeys(path("roads.shp"), mapKeys, mapUnmatched, dataset, "", dataKeys,
                                    dataUnmatched, maxRows, matchedCount);
    }

    const std::shared_ptr<MemorySource> towns = std::make_shared<MemorySource>(
        std::vector<VEXA_Variable>{text("name", 4), numeric("district"), numeric("part")},
        std::vector<MemorySource::Row>{{"Bonn", 1.0, 2.0}, {"Ulm", 3.0, 4.0}});
    const LocallyUniqueID dataset = SvrDMDataset::Register(towns);
    KeyRows mapUnmatched{{"before"}};
    KeyRows dataUnmatched{{"before"}};
    int matchedCount = -7;
};

const CFField kWhole{"id", CFField::Nominal, CFField::Integer};
const CFField kWholeToo{"sub id", CFField::Nominal, CFField::Integer};

} // namespace

TEST_F(Matching, AsksThreeQuestionsOfACopyOfTheMap)
{
    const std::vector<CFField> map = {kWhole, textField("label"), kWholeToo, realField("size")};
    WrittenRows matched({realField("id"), textField("label"), realField("sub id")},
                        {{1.0, "a", 1.0}, {2.5, "b", 1.0}});
    WrittenRows ofMap({textField("label"), realField("sub id"), realField("id")},
                      {{"x\ty", 7.0, 1e15}});
    WrittenRows ofData({realField("district"), textField("name"), realField("part")},
                       {{3.0, "Ulm", 4.0}, {-0.125, "", 0.0}});
    leave(map, {&matched, &ofMap, &ofData});
    ASSERT_TRUE(match({"id", "label", "sub id"}, {"district", "name", "part"})) << reason();
    EXPECT_EQ(matchedCount, 2);
    EXPECT_THAT(mapUnmatched, ElementsAre(ElementsAre("1e+15", "x\ty", "7")));
    EXPECT_THAT(dataUnmatched,
                ElementsAre(ElementsAre("3", "Ulm", "4"), ElementsAre("-0.125", "", "0")));
    EXPECT_EQ(matched.disposals + ofMap.disposals + ofData.disposals, 3);
    EXPECT_THAT(takeTraces(), UnorderedElementsAre("HvlJobText_MatchShapeKeys_Preshape.hvl",
                                                   "HvlJobText_MappingKeys_Match_Map.hvl",
                                                   "HvlJobText_MappingKeys_UnMatch_Map.hvl",
                                                   "HvlJobText_MappingKeys_UnMatch_DS.hvl"));
    const Names texts = jobs();
    ASSERT_EQ(texts.size(), 4U);
    EXPECT_EQ(texts[0], R"(val f1Conf = {"geospatial":{"location":")" + url("roads.shp") +
                            R"(","type":"shp"}})"
                            "\nval f2Conf = {\"dataDestination\":\"shapedata.hvbf\","
                            R"("dataModelDestination":"shapedatamodel.xml","type":"hvbf"})"
                            "\nread(f1Conf) -> write(f2Conf)");
    // Whole numbers become real ones, one after the other.
    const std::string sides =
        R"(val f1Conf = {"filesystem":{"dataModel":"shapedatamodel.xml","locations":)"
        R"([{"path":"shapedata.hvbf","parser":{"name":"hvbf","config":{}}}]}})"
        "\nval f2Lambda = ctx => x => (\"id\", toReal(x.id))\n"
        "val f3Lambda = ctx => x => (\"sub id\", toReal(x.`sub id`))\n"
        R"(val f4Conf = {"output":[{"input":"id","function":"key","outName":"id"},)"
        R"({"input":"label","function":"key","outName":"label"},)"
        R"({"input":"sub id","function":"key","outName":"sub id"}]})"
        "\nval f4 = read(f1Conf) -> reclassifyField(_, f2Lambda) -> "
        "reclassifyField(_, f3Lambda) -> aggregate(f4Conf)\n"
        R"(val f5Conf = {"dataSource":"contextData"})"
        "\n"
        R"(val f6Conf = {"output":[{"input":"district","function":"key","outName":"district"},)"
        R"({"input":"name","function":"key","outName":"name"},)"
        R"({"input":"part","function":"key","outName":"part"}]})"
        "\nval f6 = read(f5Conf) -> aggregate(f6Conf)\n"
        R"(val f7Conf = {"matchFields":[{"shape":"id","dataset":"district"},)"
        R"({"shape":"label","dataset":"name"},{"shape":"sub id","dataset":"part"}],)";
    const std::string questions[] = {
        R"("outputFields":{"shape":["id","label","sub id"]},"joinType":"Inner"})",
        R"("outputFields":{"shape":["id","label","sub id"]},"joinType":"Anti",)"
        R"("nonMatchingSources":["shape"]})",
        R"("outputFields":{"dataset":["district","name","part"]},"joinType":"Anti",)"
        R"("nonMatchingSources":["dataset"]})"};
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(texts[i + 1], sides + questions[i] +
                                    "\nval f8Conf = {\"dataDestination\":\"joindata.csv\","
                                    R"("dataModelDestination":"joindatamodel.xml",)"
                                    R"("type":"text/csv"})"
                                    "\njoin(f7Conf, dataset: f6, shape: f4) -> write(f8Conf)");
}

TEST_F(Matching, LeavesOtherKeysAndLayersAsTheyAre)
{
    WrittenRows none({}, {});
    leave({kWhole, textField("label")}, {&none, &none, &none});
    ASSERT_TRUE(match({"label"}, {"name"}));
    EXPECT_THAT(jobs()[1], testing::HasSubstr("read(f1Conf) -> aggregate(f2Conf)"));
    EXPECT_EQ(matchedCount, 0);
    EXPECT_THAT(mapUnmatched, IsEmpty());

    engine.clearCalls();
    takeTraces();
    ASSERT_TRUE(maps->matchServiceKeys("http://maps", 3, {"label"}, mapUnmatched, dataset, "",
                                       {"name"}, dataUnmatched, 0, matchedCount));
    EXPECT_THAT(jobs()[0], testing::StartsWith(R"(val f1Conf = {"geospatial":{"location":)"
                                               R"("http://maps","type":"mps","queryLayer":3}})"));
    EXPECT_THAT(takeTraces(), testing::Contains("HvlJobText_MatchServiceKeys_Preshape.hvl"));
}

TEST_F(Matching, SpeaksUtf8ToTheEngineWhateverTheHostSpeaks)
{
    const ScopedCodePage latin("ISO-8859-1");
    maps.emplace();
    const LocallyUniqueID sizes = SvrDMDataset::Register(
        std::make_shared<MemorySource>(std::vector<VEXA_Variable>{numeric("gr\xF6\xDF"
                                                                          "e")}));
    EXPECT_FALSE(maps->matchServiceKeys("http://\xFC", 0,
                                        {"fl\xE4"
                                         "che"},
                                        mapUnmatched, sizes, "",
                                        {"gr\xF6\xDF"
                                         "e"},
                                        dataUnmatched, -1, matchedCount))
        << "there are no rows";
    ASSERT_EQ(jobs().size(), 2U);
    EXPECT_THAT(jobs()[0], testing::HasSubstr("http://ü"));
    EXPECT_THAT(jobs()[1], testing::HasSubstr(R"({"shape":"fläche","dataset":"größe"})"));
}

TEST_F(Matching, CutsListsOneRowBehindTheLimit)
{
    using Row = std::vector<WrittenRows::Value>;
    const std::vector<Row> rows = {{"a"}, {std::nullopt}, {"b"}, {"c"}};
    const std::pair<int, Names> cases[] = {
        {-1, {"a", "b", "c"}}, {0, {"a"}},           {1, {"a", "b"}},
        {2, {"a", "b", "c"}},  {9, {"a", "b", "c"}},
    };
    for (const auto& [maxRows, keys] : cases) {
        SCOPED_TRACE(maxRows);
        WrittenRows matched({textField("label")}, rows);
        WrittenRows ofMap({textField("label")}, rows);
        WrittenRows ofData({textField("name")}, rows);
        leave({textField("label")}, {&matched, &ofMap, &ofData});
        ASSERT_TRUE(match({"label"}, {"name"}, maxRows));
        EXPECT_EQ(matchedCount, 3) << "a missing key does not match, and the count has no limit";
        for (const KeyRows* list : {&mapUnmatched, &dataUnmatched}) {
            Names found;
            for (const std::vector<std::string>& row : *list)
                found.push_back(row.at(0));
            EXPECT_EQ(found, keys);
        }
    }
}

TEST_F(Matching, AFailureLeavesWhatWasFoundBefore)
{
    WrittenRows good({textField("label"), textField("name")}, {{"a", "a"}, {"b", "b"}});
    WrittenRows broken({textField("label"), textField("name")}, {{"c", "c"}});
    broken.end = EmbeddedHV::RowDataIterator::Cancelled;
    struct FailureCase
    {
        std::vector<WrittenRows*> rows;
        std::size_t failingJob; ///< from 1; 0 for none
        int count;
        KeyRows ofMap;
        const char* reason;
    };
    const FailureCase cases[] = {
        {{}, 1, 0, {}, "ID|text|"},
        {{}, 2, 0, {}, "ID|text|"},
        {{}, 0, 0, {}, ""},
        {{&broken}, 0, 1, {}, ""},
        {{&good}, 3, 2, {}, "ID|text|"},
        {{&good, &broken}, 0, 2, {{"c"}}, ""},
    };
    for (const auto& [rows, failingJob, count, ofMap, expected] : cases) {
        SCOPED_TRACE(std::to_string(rows.size()) + " " + std::to_string(failingJob));
        for (WrittenRows* written : {&good, &broken})
            written->rewind();
        leave({textField("label")}, rows);
        if (failingJob != 0)
            engine.setScript([this, number = failingJob](ScriptedJob& job) {
                if (jobs().size() == number)
                    job.listener().onError("ID", "text", "");
                else
                    job.listener().onSuccess();
            });
        EXPECT_FALSE(match({"label"}, {"name"}));
        EXPECT_EQ(matchedCount, count);
        EXPECT_EQ(mapUnmatched, ofMap);
        EXPECT_THAT(dataUnmatched, IsEmpty());
        EXPECT_EQ(reason(), expected);
    }
}

TEST_F(Matching, RefusesWhatItCannotBegin)
{
    const auto matchFile = [this](const std::string& shape, const std::string& data) {
        return maps->matchShapeKeys(path(shape), {"label"}, mapUnmatched, kNoDataset, data,
                                    {"name"}, dataUnmatched, -1, matchedCount);
    };
    EXPECT_FALSE(matchFile("missing.shp", ""));
    EXPECT_EQ(reason(), "|A corresponding dbf file was not found|");
    EXPECT_EQ(matchedCount, -7) << "nothing is touched without a shape file";
    EXPECT_THAT(mapUnmatched, ElementsAre(ElementsAre("before")));

    EXPECT_FALSE(matchFile("roads.shp", path("missing.sav")));
    EXPECT_THAT(reason(), testing::HasSubstr("missing.sav"));
    EXPECT_EQ(matchedCount, 0);
    EXPECT_THAT(mapUnmatched, IsEmpty());
    EXPECT_FALSE(match({"label", "id"}, {"name"}));
    EXPECT_EQ(reason(), "|There must be as many key fields of the data as of the map.|");
    EXPECT_THAT(jobs(), IsEmpty());
}

TEST_F(Matching, ACancelledRequestFailsAtItsNextJob)
{
    engine.setScript([this](ScriptedJob& job) {
        std::thread([this] { maps->cancelExecution(); }).join();
        EXPECT_TRUE(job.waitForCancel());
        job.listener().onCancel();
    });
    EXPECT_FALSE(match({"label"}, {"name"}));
    EXPECT_EQ(reason(), "");
    EXPECT_EQ(maps->getState(), HVProgressListener::NotStarted) << "of the job that was refused";
    EXPECT_TRUE(maps->isStopProcessor());
    EXPECT_EQ(jobs().size(), 2U);
}
