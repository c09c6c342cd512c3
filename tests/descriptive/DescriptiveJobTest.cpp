#include <gmock/gmock.h>

#include <cstdlib>
#include <regex>
#include <tuple>

#include "CFAppHost.h"
#include "data/HVSimpleContainer.h"
#include "descriptive/HVDescriptive.h"
#include "descriptive/People.h"
#include "support/HostScopes.h"
#include "support/JobFixture.h"
#include "support/ScratchFolder.h"
#include "support/ZipReader.h"

// Jobs of the class on the real engine.

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Names = std::vector<std::string>;

class DescriptiveJob : public JobTest
{
protected:
    /// The text of the last job, with a word for the place of each scratch file.
    static std::string jobOf(const HVDescriptive& descriptive)
    {
        static const std::regex place("file:///[^\"]*/hvcontfile_[^\"]*");
        return std::regex_replace(descriptive.GetHVLJob(), place, "URI");
    }

    static Names namesOf(const CFMetaData& model)
    {
        Names names;
        for (std::size_t i = 0; i < model.FieldCount(); ++i)
            names.push_back(model.GetField(i)->GetName());
        return names;
    }

    /// Takes a trace file out of the directory that the process traces to, or returns an empty
    /// text.
    static std::string takeTrace(const std::string& name)
    {
        const std::filesystem::path file =
            std::filesystem::path(std::getenv("HV_STAT_DEBUG_DIR")) / name;
        std::ifstream stream(file, std::ios::binary);
        std::string content(std::istreambuf_iterator<char>(stream), {});
        std::filesystem::remove(file);
        return content;
    }

    const MemorySource source = people();
    SourceRows rows{source, "people"};
    const Names fields = {"town", "persons", "size"};
};

TEST_F(DescriptiveJob, DescribesFieldsAndWeighsThem)
{
    constexpr const char* kPlainTrace = "HVINTEG_HVDescriptive_DataModel.xml";
    constexpr const char* kWeightTrace = "HVINTEG_HVDesc_Weight_DataModel.xml";
    takeTrace(kPlainTrace);
    takeTrace(kWeightTrace);
    HVDescriptive descriptive(*runner, &rows);
    CFMetaData model;

    ASSERT_TRUE(descriptive.BuildMetaData(&fields, model, 2, false));
    EXPECT_EQ(namesOf(model), fields);
    ASSERT_EQ(model.GetField("town")->GetValues().size(), 2U);
    EXPECT_EQ(model.GetField("town")->GetValues()[1].GetText(), "Ulm");
    EXPECT_THAT(model.GetField("size")->GetValues(), IsEmpty()) << "more than two";
    EXPECT_THAT(descriptive.GetHVLJob(), Not(HasSubstr("frequencyWeightField")));
    EXPECT_EQ(takeTrace(kPlainTrace), descriptive.GetStatXML());
    EXPECT_EQ(takeTrace(kWeightTrace), "");
    EXPECT_EQ(takeTrace("HVINTEG_HVDescriptive.hvl"), descriptive.GetHVLJob());

    ASSERT_TRUE(descriptive.BuildMetaData(&fields, model, 3, true));
    EXPECT_EQ(namesOf(model), (Names{"town", "size"}));
    EXPECT_EQ(model.GetField("size")->GetValues().size(), 3U);
    EXPECT_THAT(descriptive.GetHVLJob(), HasSubstr(R"("frequencyWeightField":"persons")"));
    EXPECT_THAT(descriptive.GetStatXML(), HasSubstr(R"(weightField="persons" weight="5")"));
    EXPECT_EQ(takeTrace(kPlainTrace), "");
    EXPECT_EQ(takeTrace(kWeightTrace), descriptive.GetStatXML());

    // The weight of an earlier call stays, in the list or not.
    ASSERT_TRUE(descriptive.BuildMetaData(&fields, model, 3, false));
    EXPECT_EQ(namesOf(model), fields);
    EXPECT_THAT(descriptive.GetHVLJob(), HasSubstr(R"("frequencyWeightField":"persons")"));
}

TEST_F(DescriptiveJob, WritesThreeLines)
{
    const std::string defaults =
        R"("computeSummaryStats":true,"computeDistSummaryForString":true,)"
        R"("computeCustomPercentiles":false,"customPercentilesAccuracy":"none",)"
        R"("computeAllPercentiles":false,"computeAllTargetInputPairs":false,)"
        R"("storageTypeHandling":"none","fieldRoleHandling":"none","measureHandling":"none",)"
        R"("computeDistSummaryForNumeric":"none","computeBivStatsForBDP":false,)"
        R"("identifyExtremeOutliers":false,"dataInterestingness":false,)"
        R"("useFeatureSelection":"none","useEqualFreqBinning":false,)"
        R"("useMissingValueHandling":false,"useSupervisedMerging":false,)"
        R"("zeroInflationDetection":false,"zeroInflationHandling":false,)";
    const std::string containers = R"(val outCon = [{"export":true,"name":"PMML","uri":"URI"},)"
                                   R"({"export":true,"name":"StatXML","uri":"URI"}])";
    CFMetaData model;

    HVDescriptive ofRows(*runner, &rows);
    ofRows.SetNThreads(0);
    ASSERT_TRUE(ofRows.BuildMetaData(&fields, model, -1, false));
    EXPECT_EQ(jobOf(ofRows),
              "val deConf = {" + defaults +
                  R"("trimTrailingBlank":false,"computeDateDuration":false,)"
                  R"("computeTimeDuration":false,"outlierHandlingMethod":"markOut",)"
                  R"("outlierDetectionMethod":"none","inputFieldList":["town","persons","size"],)"
                  R"("maxNOfDistinctValues":-1})"
                  "\n" +
                  containers +
                  "\nread({\"dataSource\":\"people\",\"readErrorThreshold\":-1}) -> "
                  "descriptives:descriptives( deConf, _,outCon)\n");

    const ScratchFolder folder;
    folder.put("in.csv", "a,1\nb,2\n");
    const std::string read = R"(read({"filesystem":{"locations":[{"path":"file:///)" +
                             (folder.path / "in.csv").string() +
                             R"(","parser":{"name":"csv","config":{}}}]}}))";
    HVDescriptive ofText(*runner, read);
    ofText.SetDESetting("trimTrailingBlank", true);
    ofText.SetDESetting("outlierHandlingMethod", "trim");
    ofText.SetDESetting("outlierDetectionMethod", "standardDeviation");
    ofText.SetDESetting("note", std::string("\"\\"));
    ofText.SetNThreads(1);
    ofText.SetNThreads(0); // changes nothing
    const Names one = {"field2"};
    // Without rows there is no weight.
    ASSERT_TRUE(ofText.BuildMetaData(&one, model, 5, true));
    EXPECT_EQ(namesOf(model), one);
    EXPECT_EQ(jobOf(ofText), "val deConf = {" + defaults +
                                 R"("trimTrailingBlank":true,"computeDateDuration":false,)"
                                 R"("computeTimeDuration":false,"outlierHandlingMethod":"trim",)"
                                 R"("outlierDetectionMethod":"standardDeviation",)"
                                 R"("note":"\"\\","NumberOfThreads":1,)"
                                 R"("inputFieldList":["field2"],"maxNOfDistinctValues":5})"
                                 "\n" +
                                 containers + "\n" + read +
                                 "-> descriptives:descriptives( deConf, _,outCon)\n");
}

TEST_F(DescriptiveJob, TellsTheModelAndTheIntervalOfDates)
{
    // The setting is that of the job; an empty unit means no interval.
    const std::tuple<Names, Names, bool, const char*, const char*> cases[] = {
        {{"size"}, {"day"}, true, R"("stdDateTimeFieldList":["day"])", R"("month")"},
        {{}, {"day"}, true, R"("stdDateTimeFieldList":["day"])", R"("month")"},
        {{}, {"year"}, false, R"("nonStdDateTimeFieldList":[["year"]])", R"("year")"},
        {{"persons"}, {}, true, R"("inputFieldList":["persons"])", ""},
    };
    for (const auto& [inputs, dates, standard, setting, unit] : cases) {
        SCOPED_TRACE(setting);
        HVDescriptive descriptive(*runner, &rows);
        std::string interval = "before";
        std::string model = "before";
        ASSERT_TRUE(descriptive.UpdateDateModel(&inputs, &dates, standard, interval, model, 10));
        EXPECT_THAT(descriptive.GetHVLJob(), HasSubstr(setting));
        EXPECT_THAT(descriptive.GetHVLJob(), HasSubstr(R"("name":"JSON")"));
        EXPECT_THAT(interval, HasSubstr(unit));
        EXPECT_EQ(interval.empty(), dates.empty());
        EXPECT_EQ(namesOf(model.empty() ? CFMetaData() : CFMetaData(model)), inputs);
        EXPECT_EQ(model.empty(), inputs.empty());
        EXPECT_EQ(descriptive.GetStatXML().empty(), inputs.empty()) << "read only for the model";
        EXPECT_EQ(takeTrace("HVINTEG_HVDescriptive_AutoDetect.json"), interval);
    }
}

TEST_F(DescriptiveJob, WritesAFurtherContainer)
{
    HVSimpleContainer results("Results", "");
    HVDescriptive descriptive(*runner, &rows);
    descriptive.AddOutputContainer(results);
    CFMetaData model;
    std::string interval;
    std::string text;
    const Names day = {"day"};
    const auto written = [&] {
        std::string document;
        ZipReader reader(results.getGenericPath());
        EXPECT_TRUE(reader.GotoFile("Results.json") && reader.ExportString(document));
        return document;
    };
    ASSERT_TRUE(descriptive.BuildMetaData(&fields, model, 10, false));
    EXPECT_EQ(namesOf(model), fields);
    EXPECT_THAT(written(), Not(HasSubstr("\"intervals\"")));
    ASSERT_TRUE(descriptive.UpdateDateModel(&fields, &day, true, interval, text, 10));
    EXPECT_THAT(interval, HasSubstr(R"("month")"));
    EXPECT_THAT(written(), HasSubstr("\"intervals\"")) << "of the second job";
}

TEST_F(DescriptiveJob, RunsNoJobForNothing)
{
    HVDescriptive descriptive(*runner, &rows);
    CFMetaData model;
    const Names none;
    std::string interval = "before";
    std::string text = "before";
    EXPECT_FALSE(descriptive.BuildMetaData(nullptr, model, 1, true));
    EXPECT_FALSE(descriptive.BuildMetaData(&none, model, 1, true));
    EXPECT_FALSE(descriptive.UpdateDateModel(nullptr, &fields, true, interval, text, 1));
    EXPECT_FALSE(descriptive.UpdateDateModel(&fields, nullptr, true, interval, text, 1));
    EXPECT_EQ(interval + text, "beforebefore");
    EXPECT_FALSE(descriptive.UpdateDateModel(&none, &none, true, interval, text, 1));
    EXPECT_EQ(interval + text, "");

    rows.SetCancelStatus();
    EXPECT_FALSE(descriptive.BuildMetaData(&fields, model, 1, true));
    EXPECT_FALSE(descriptive.UpdateDateModel(&fields, &none, true, interval, text, 1));
    EXPECT_EQ(descriptive.GetHVLJob(), "");
}

TEST_F(DescriptiveJob, ShowsWhyAJobFailed)
{
    const Names unknown = {"no such field"};
    CFMetaData model;
    model.AppendField(CFField("kept", CFField::Nominal, CFField::String));
    HVDescriptive descriptive(*runner, &rows);
    EXPECT_FALSE(descriptive.BuildMetaData(&unknown, model, 1, false));
    HVDescriptive withoutInput(*runner, nullptr);
    EXPECT_FALSE(withoutInput.BuildMetaData(&fields, model, 1, true));
    EXPECT_EQ(namesOf(model), Names{"kept"});
    EXPECT_EQ(descriptive.GetStatXML(), "");
    const auto errors = HostJournal::instance().entries(HostJournal::Kind::Error);
    ASSERT_EQ(errors.size(), 2U);
    EXPECT_THAT(errors[0].text, HasSubstr("no such field"));
    EXPECT_EQ(errors[0].level, 3);
}

// The engine gets paths in UTF-8 and the file services take them in the host's encoding.
TEST_F(DescriptiveJob, ReadsItsResultsInAnyCodePage)
{
    const ScratchFolder folder;
    folder.put("caf\xc3\xa9/file");
    CFAppHost& host = *CFAppHost::getInstance();
    const std::string before = host.getTempDirectory();
    host.setTempDirectory(folder.name("caf\xc3\xa9"));
    {
        const ScopedCodePage page("windows-1252");
        CFMetaData model;
        EXPECT_TRUE(HVDescriptive(*runner, &rows).BuildMetaData(&fields, model, 1, false));
        EXPECT_EQ(namesOf(model), fields);
    }
    host.setTempDirectory(before);
}

} // namespace
