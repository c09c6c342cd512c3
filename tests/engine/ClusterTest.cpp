#include <filesystem>
#include <tuple>

#include "EngineBackend.h"
#include "engine/ClusterMachine.h"
#include "engine/EngineFixture.h"

// What only a job on a cluster does. tests/cluster/engine_test.py starts the cluster.

using namespace EmbeddedHV;
using namespace EngineTest;
using testing::HasSubstr;

namespace {

class ClusterTest : public EngineFixture
{
protected:
    void SetUp() override
    {
        if (clusterUrl().empty())
            GTEST_SKIP() << "without a cluster";
    }

    /// Those of the fixture and one more.
    EHVAppSetting settingsWith(const char* key, const char* value)
    {
        EHVAppSetting settings(path("root"), std::getenv("HV_TEST_COMPONENTS"), "en_US");
        settings.addProperty(kBackendSetting, "spark");
        settings.addProperty(kUrlSetting, clusterUrl());
        settings.addProperty(kScratchSetting, std::getenv("HV_TEST_ENGINE_SCRATCH"));
        settings.addProperty(key, value);
        return settings;
    }

    RecordingListener runOn(HVServiceManager& manager, const std::string& job)
    {
        const std::unique_ptr<Execution> execution(
            manager.getExecutionService()->createExecution("en_US"));
        execution->prepare(nullptr, expanded(job));
        RecordingListener listener;
        execution->execute(nullptr, &listener);
        return listener;
    }
};

std::size_t threadCount()
{
    const std::filesystem::directory_iterator tasks("/proc/self/task");
    return static_cast<std::size_t>(std::distance(begin(tasks), end(tasks)));
}

TEST_F(ClusterTest, WhatItCannotDoIsRefusedBeforeAnythingRuns)
{
    write("in.csv", "k\n1\n");
    const std::string first = readCsv("in.csv") + " -> " + writeCsv("out.csv") + "\n";
    for (
        const char* step :
        {R"(reprojection({"field": "k", "wkid": 3857}))",
         R"(write({"dataDestination": "$DIR/s.sav", "type": "application/x-vexa-sav", "dataPassword": "p"}))",
         R"(write({"dataDestination": "$DIR/m.json", "type": "text/geojson"}))"}) {
        const auto listener = run(first + readCsv("in.csv") + " -> " + step);
        EXPECT_EQ(listener.errorId, "HVEPL0013E") << listener.errorText;
        EXPECT_THAT(listener.errorText, HasSubstr("run the job on the embedded engine"));
        EXPECT_EQ(files(), std::vector<std::string>{"in.csv"}) << step;
    }
}

TEST_F(ClusterTest, ComponentsCollectNoMoreThanTheyMay)
{
    HVServiceManager small(clusterMachine(), settingsWith(kCollectSetting, "8000"));
    write("in.csv", numbers(2000));
    // Only the fields that the component reads count: one of two.
    for (const auto& [records, ending] : {std::pair{1000, "success"}, {1001, "error"}}) {
        const RecordingListener listener = runOn(
            small,
            readCsv("in.csv", ", \"maxRecordsCount\": " + std::to_string(records)) +
                R"( -> deriveField(_, ctx => x => ("other", 1.5)) -> descriptives:descriptives(
                     {"inputFieldList": ["other"]}, _,
                     [{"export": true, "name": "StatXML", "uri": "$DIR/stat.zip"}]))");
        EXPECT_EQ(listener.ending, ending) << listener.errorText;
        if (records > 1000) {
            EXPECT_EQ(listener.errorId, "HVEIO0025E");
            EXPECT_THAT(listener.errorText, HasSubstr("\"engine.collect.bytes\""));
        }
    }
}

TEST_F(ClusterTest, SumsAreExactUnlessTheSettingsPreferSpeed)
{
    write("in.csv", "k,v\na,1e20\na,1\na,0.5\na,-1e20\nb,0.1\nb,0.1\nb,0.1\nc,\n");
    const std::string job = readCsv("in.csv") + R"( -> aggregate({"output": [
        {"function": "key", "input": "k"}, {"function": "sum", "input": "v"},
        {"function": "mean", "input": "v"}]}) -> )" +
                            writeCsv("out.csv");
    for (const auto& [sums, result] :
         {std::pair{"exact", "a,1.5,0.375\nb,0.30000000000000004,0.1\nc,,\n"},
          {"double", "a,0.0,0.0\nb,0.30000000000000004,0.10000000000000002\nc,,\n"}}) {
        HVServiceManager manager(clusterMachine(), settingsWith(kSumsSetting, sums));
        const RecordingListener listener = runOn(manager, job);
        EXPECT_EQ(listener.ending, "success") << listener.errorText;
        EXPECT_EQ(read("out.csv"), std::string("k,sum_v,mean_v\n") + result) << sums;
    }
}

/// The workers split the file into parts of 40 bytes, where they can.
TEST_F(ClusterTest, ACsvFileInPartsHasTheSameRecords)
{
    EHVAppSetting settings = settingsWith(kUploadSetting, "8");
    settings.addProperty("engine.option.spark.sql.files.maxPartitionBytes", "40");
    HVServiceManager manager(clusterMachine(), settings);
    constexpr std::tuple<const char*, const char*, const char*> kRecords[] = {
        {"plain,text\n", "plain,text\n", "without quotes"},
        {"plain,text\r\n", "plain,text\n", "with carriage returns"},
        {"\"a, b\",\"say \"\"x\"\"\"\n", "\"a, b\",\"say \"\"x\"\"\"\n", "in quotes"},
        {"\"a\nb\",\"c\n\"\n", "\"a\nb\",\"c\n\"\n", "with line ends in quotes"},
        {"\"a\nb,\",\"\"\"\nc\"\n", "\"a\nb,\",\"\"\"\nc\"\n", "with what looks like a field"},
        {"a\"b,\"x\ny\"\n", "\"a\"\"b\",\"x\ny\"\n", "with a quote in a field without quotes"},
        {",\n", ",\n", "of missing values"},
    };
    for (const auto& [record, written, what] : kRecords) {
        SCOPED_TRACE(what);
        std::string csv = "k,v,w\n";
        std::string expected = csv;
        for (int i = 0; i < 30; ++i) {
            csv += std::to_string(i) + "," + record;
            expected += std::to_string(i) + "," + written;
        }
        write("in.csv", csv);
        const RecordingListener listener =
            runOn(manager, readCsv("in.csv") + " -> " + writeCsv("out.csv"));
        EXPECT_EQ(listener.ending, "success") << listener.errorText;
        EXPECT_EQ(read("out.csv"), expected);
    }
}

/// The workers tell the types by patterns of their own. Each list is a field.
TEST_F(ClusterTest, ACsvFileHasTheTypesThatTheEmbeddedEngineFinds)
{
    const std::vector<std::vector<const char*>> fields = {
        {"0", "-7", "+5"},
        {"9223372036854775807", "-9223372036854775808", "1"},
        {"9223372036854775808", "1", "2"},
        {"99999999999999999999", "-1", ""},
        {"007", "1", "2"},
        {"-0", "0", "+0"},
        {" 5", "6 ", " 7 "},
        {"1.5", "2.", ".5"},
        {"1e5", "123e-5", "1E+3"},
        {"nan", "inf", "-inf"},
        {"NaN", "Infinity", "-Infinity"},
        {"Nan", "INF", "1"},
        {"01.5", "1", "2"},
        {"1.5.2", "1", "2"},
        {"2020-01-31", "1999-12-01", ""},
        {"2020-02-30", "2020-01-01", ""},
        {"2020-1-31", "2020-01-01", ""},
        {" 2020-01-31", "2020-01-01", ""},
        {"2020-01-31 ", "2020-01-01", ""},
        {"0000-01-01", "9999-12-31", ""},
        {"1234-56", "1", ""},
        {"1e400", "1", ""},
        {"1e-400", "1", ""},
        {"4e-320", "1.7976931348623157e308", "0e999"},
        {"5.e3", "-.5", "1e-5"},
        {"12:30", "1:05:09", "23:59:59.123456"},
        {"24:00", "12:30", ""},
        {"12:60", "12:30", ""},
        {"12:30:", "12:30", ""},
        {" 12:30", " 1:05:09 ", "1:05:09.5  "},
        {"12:30 ", "12:30", ""},
        {"2020-01-31 12:30", "2020-01-31T01:02:03.5", ""},
        {"2020-01-31 12:30", "2020-01-31", ""},
        {"2020-02-30 12:30", "2020-01-31 12:30", ""},
        {" 2020-01-31 12:30", " 2020-01-31T12:30:09 ", "2020-01-31 12:30:09.5 "},
        {"2020-01-31 12:30 ", "2020-01-31 12:30", ""},
        {"2020-01-31x12:30", "2020-01-31 12:30", ""},
        {"12:30", "1", ""},
        {"+", "-", "."},
        {"None", "in", "n"},
        {"1,5", "1", "2"},
        {"5 6", "1", ""},
        {"\t5", "1", ""},
        {"\u0661", "1", ""},
        {"5\u2028", "1", ""},
        {"2020-01-31\u2028", "2020-01-31", ""},
        {"", "", ""},
    };
    std::string csv;
    for (std::size_t i = 0; i < fields.size(); ++i)
        csv += (i == 0 ? "f" : ",f") + std::to_string(i);
    for (std::size_t record = 0; record < 3; ++record)
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const std::string text = fields[i][record];
            csv += (i == 0 ? "\n" : ",") + (text.empty() ? text : "\"" + text + "\"");
        }
    write("in.csv", csv + "\n");
    const auto resultOn = [&](const EHVAppSetting& settings) {
        HVServiceManager manager(clusterMachine(), settings);
        succeeded(runOn(manager, readCsv("in.csv") + R"( -> write({"dataDestination":
            "$DIR/out.csv", "type": "text/csv", "dataModelDestination": "$DIR/m.xml"}))"));
        return read("m.xml") + read("out.csv");
    };
    EXPECT_EQ(resultOn(settingsWith(kUploadSetting, "8")),
              resultOn(EHVAppSetting(path("root"), std::getenv("HV_TEST_COMPONENTS"), "en_US")));
}

TEST_F(ClusterTest, AThousandJobsLeaveNothingBehind)
{
    write("in.csv", "k,v\n1,2\n3,4\n");
    const std::string job =
        readCsv("in.csv") +
        R"( -> aggregate({"output": [{"function": "count", "outName": "n"}]}) -> )" +
        writeCsv("out.csv");
    std::size_t before = 0;
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(succeeded(run(job)).ending, "success") << i;
        if (i == 20) // the client's pools of threads are full
            before = threadCount();
    }
    EXPECT_LT(threadCount(), before + 20); // the virtual machine has a few more
    EXPECT_EQ(files(), (std::vector<std::string>{"in.csv", "out.csv"}));
}

} // namespace
