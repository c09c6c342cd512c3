#include <gtest/gtest.h>

#include <algorithm>

#include "engine/EngineFixture.h"

// The component descriptives with groups: each group gets what a job finds that reads it alone.

namespace EngineTest {
namespace {

class Groups : public EngineFixture
{
protected:
    static constexpr int kCount = 4;

    /// Describes the records of the file that the lambda keeps.
    RecordingListener describe(const std::string& name, const std::string& settings,
                               const std::string& kept)
    {
        std::string list;
        for (const char* container : {"StatXML", "PMML", "JSON", "Results"})
            list += (list.empty() ? "" : ", ") + (R"({"name": ")" + std::string(container)) +
                    R"(", "uri": "$DIR/)" + name + container + R"(.zip"})";
        return run("val conf = " + settings + "\nval out = [" + list + "]\n" + readCsv("in.csv") +
                   " -> filterRecords(_, c => x => " + kept +
                   ") -> descriptives:descriptives(conf, _, out)");
    }

    /// What is between two texts; empty if they do not occur.
    static std::string between(const std::string& text, const std::string& begin,
                               const std::string& end)
    {
        const std::size_t from = text.find(begin);
        const std::size_t to = text.find(end, from);
        return to == std::string::npos ? ""
                                       : text.substr(from + begin.size(), to - from - begin.size());
    }

    void expectAlone(const std::string& settings, bool countsLeftOut)
    {
        SCOPED_TRACE(settings);
        succeeded(describe("all", R"({"groupField": "g", "groupCount": "4", )" + settings, "true"));
        const std::string statistics = member("allStatXML.zip", "StatXML.xml");
        std::string intervals = member("allJSON.zip", "TIME_INTERVAL.json");
        std::erase_if(intervals, [](char byte) { return byte == ' ' || byte == '\n'; });
        for (int group = 1; group <= kCount; ++group) {
            const std::string number = std::to_string(group);
            succeeded(describe("one", "{" + settings, "x.g == " + number));
            const std::string open = "<Group number=\"" + number + "\"";
            const std::string found = between(statistics, open, "</Group>");
            EXPECT_EQ(
                found.substr(found.find('\n') + 1),
                between(member("oneStatXML.zip", "StatXML.xml"), "<StatXML>\n", "</StatXML>"));
            EXPECT_EQ(found.starts_with(" leftOut=\""), countsLeftOut);
            EXPECT_EQ(member("allPMML.zip", ("PMML" + number + ".xml").c_str()),
                      member("onePMML.zip", "PMML.xml"));
            EXPECT_EQ(member("allResults.zip", ("Results" + number + ".json").c_str()),
                      member("oneResults.zip", "Results.json"));
            std::string own = member("oneJSON.zip", "TIME_INTERVAL.json");
            std::erase_if(own, [](char byte) { return byte == ' ' || byte == '\n'; });
            EXPECT_NE(intervals.find(between(own, R"("timeIntervals":[)", "]}")),
                      std::string::npos);
        }
    }
};

/// Records of the groups 1, 2 and 4 in turn. Group 2 has constants, integers beyond the exact reals
/// and no day, and group 4 hundreds of values.
std::string records()
{
    std::string csv = "g,x,n,t,d,w\n";
    for (int i = 0; i < 1200; ++i) {
        const int group = i % 40 == 0 ? 2 : i % 3 == 0 ? 1 : 4;
        const double x = group == 2 ? 5 : (i * 37 % 997) / 7.0;
        csv += std::to_string(group) + "," + (i % 11 == 0 ? "" : std::to_string(x)) + "," +
               (group == 2 ? "90071992547409" + std::to_string(10 + i % 7)
                           : std::to_string(i % (group == 1 ? 3 : 600) - 1)) +
               "," + (i % 5 == 0 ? "" : std::string(1, static_cast<char>('a' + i % (7 - group)))) +
               "," +
               (group == 2 ? ""
                           : "2024-0" + std::to_string(1 + i % 9) + "-1" + std::to_string(group)) +
               "," +
               std::vector<std::string>{
                   "1", "0.1", "0", "2.5", "", "3", "-1"}[static_cast<std::size_t>(i % 7)] +
               "\n";
    }
    return csv;
}

TEST_F(Groups, AreDescribedAsIfEachWereAlone)
{
    write("in.csv", records());
    const std::string fields = R"("inputFieldList": ["x", "n", "t", "d"])";
    expectAlone(fields + "}", false);
    expectAlone(fields + R"(, "frequencyWeightField": "w", "maxNOfDistinctValues": 4,
        "stdDateTimeFieldList": ["d"]})",
                true);
    expectAlone(fields + R"(, "maxNOfDistinctValues": 0, "computeSummaryStats": false})", false);
    expectAlone(fields + R"(, "computeCustomPercentiles": "5,95", "identifyExtremeOutliers": true,
        "outlierHandlingMethod": "winsorize", "computeBivStatsForBDP": true,
        "computeMissingPatterns": true, "useEqualFreqBinning": true, "computeDateDuration": true,
        "nonStdDateTimeFieldList": [["n"]]})",
                false);
}

TEST_F(Groups, AreNamedInMessagesAndCounted)
{
    write("in.csv", "g,x\n1,2\n3,4\n3,4\n");
    const auto result =
        succeeded(describe("m", R"({"groupField": "g", "groupCount": "3", "inputFieldList": ["x"],
                          "nonStdDateTimeFieldList": [["x"]]})",
                           "true"));
    ASSERT_EQ(result.messages.size(), 3U);
    EXPECT_NE(result.messages[2].second.find("descriptives: group 3: the values"),
              std::string::npos);
    const std::string more =
        describe("m", R"({"groupField": "g", "groupCount": "2"})", "true").errorText;
    EXPECT_NE(more.find("names \"g\", which is not from 1 to 2 in 2 records"), std::string::npos)
        << more;
}

} // namespace
} // namespace EngineTest
