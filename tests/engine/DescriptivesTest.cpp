#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <sstream>

#include <nlohmann/json.hpp>
#include <pugixml.hpp>

#include "CFMetaData.h"
#include "engine/EngineFixture.h"
#include "engine/TestRows.h"

// What the component descriptives finds, against values worked out by hand.

namespace EngineTest {
namespace {

using nlohmann::json;

class Descriptives : public EngineFixture
{
protected:
    /// Describes a CSV text; the archives are stat.zip and json.zip.
    RecordingListener describe(const std::string& csv, const std::string& settings,
                               const std::string& second = "JSON")
    {
        write("in.csv", csv);
        return run("val conf = " + settings + "\n" + outputs(second) + readCsv("in.csv") +
                   " -> descriptives:descriptives(conf, _, out)");
    }

    static std::string outputs(const std::string& second)
    {
        return R"(val out = [{"export": true, "name": "StatXML", "uri": "$DIR/stat.zip"},
            {"export": true, "name": ")" +
               second + R"(", "uri": "$DIR/json.zip"}]
            )";
    }

    /// The model as its readers cut it out: up to the summaries.
    CFMetaData model() const
    {
        const std::string xml = member("stat.zip", "StatXML.xml");
        const auto begin = xml.find("<DataModel>");
        return CFMetaData(xml.substr(begin, xml.find("<DatasetSummaries>") - begin) +
                          "</DataModel>");
    }

    std::string valuesOf(const std::string& field) const
    {
        std::string list;
        const CFMetaData whole = model();
        for (const CFValue& value : whole.GetField(field)->GetValues()) {
            EXPECT_EQ(value.GetProperty(), CFValue::Valid);
            list += (list.empty() ? "" : "|") + value.GetText();
        }
        return list;
    }

    /// An attribute of a field's summary or of its statistics; NaN if it is absent.
    double statistic(const std::string& field, const char* name) const
    {
        pugi::xml_document document;
        document.load_string(member("stat.zip", "StatXML.xml").c_str());
        const pugi::xml_node summary =
            document.child("StatXML")
                .child("DataModel")
                .child("DatasetSummaries")
                .find_child_by_attribute("FieldSummary", "name", field.c_str());
        const pugi::xml_attribute own = summary.attribute(name);
        return (own ? own : summary.child("Statistics").attribute(name)).as_double(std::nan(""));
    }

    void expectStatistics(const std::string& field,
                          const std::vector<std::pair<const char*, double>>& expected) const
    {
        for (const auto& [name, value] : expected)
            EXPECT_NEAR(statistic(field, name), value, 1e-12) << field << " " << name;
    }

    json intervals() const
    {
        return json::parse(member("json.zip", "TIME_INTERVAL.json")).at("timeIntervals");
    }
};

TEST_F(Descriptives, ComputesTheStatisticsOfASample)
{
    // 1, 2, 3, 4, 10: mean 4; squares 9+4+1+0+36 = 50, cubes -27-8-1+216 = 180, fourths 1394.
    succeeded(describe("x,t\n1,a\n2,b\n3,a\n4,\n10,b\n,a\n", "{}"));
    const double s2 = 12.5;
    expectStatistics("x", {{"valid", 5},
                           {"missing", 1},
                           {"distinct", 5},
                           {"minimum", 1},
                           {"maximum", 10},
                           {"mean", 4},
                           {"variance", s2},
                           {"standardDeviation", std::sqrt(s2)},
                           {"skewness", 5.0 / 12 * 180 / (s2 * std::sqrt(s2))},
                           {"kurtosis", 30.0 / 24 * 1394 / (s2 * s2) - 8},
                           {"firstQuartile", 2},
                           {"median", 3},
                           {"thirdQuartile", 4}});
    expectStatistics("t", {{"valid", 5}, {"missing", 1}, {"distinct", 2}});
    EXPECT_EQ(valuesOf("x"), "1|2|3|4|10");
    EXPECT_EQ(valuesOf("t"), "a|b");
    EXPECT_NE(member("stat.zip", "StatXML.xml").find(R"(<Value value="a" count="3" />)"),
              std::string::npos);
    EXPECT_EQ(files(), (std::vector<std::string>{"in.csv", "json.zip", "stat.zip"}));
}

TEST_F(Descriptives, WeightsStandForRepeatedRecords)
{
    succeeded(describe("x\n1\n1\n1\n2.5\n4\n4\n", "{}"));
    const char* const names[] = {"mean",          "variance", "skewness",     "kurtosis",
                                 "firstQuartile", "median",   "thirdQuartile"};
    std::vector<std::pair<const char*, double>> repeated;
    for (const char* name : names)
        repeated.emplace_back(name, statistic("x", name));
    // Records without a weight that counts are nowhere, and nor are their values.
    succeeded(describe("x,w\n1,3\n2.5,1\n4,2\n100,0\n200,-1\n300,\n,5\n",
                       R"({"frequencyWeightField": "w"})"));
    expectStatistics("x", repeated);
    expectStatistics(
        "x",
        {{"valid", 3}, {"missing", 1}, {"validWeight", 6}, {"missingWeight", 5}, {"maximum", 4}});
    EXPECT_EQ(valuesOf("x"), "1|2.5|4");
    EXPECT_EQ(model().FieldCount(), 1U) << "the weight is described only if it is listed";
}

TEST_F(Descriptives, KeepsDigitsFarFromZero)
{
    succeeded(describe("x\n1000000000001\n1000000000002\n1000000000003\n", "{}"));
    expectStatistics("x", {{"variance", 1}, {"skewness", 0}});
}

TEST_F(Descriptives, TellsDistinctValuesUpToTheLimit)
{
    const std::pair<const char*, const char*> cases[] = {
        {"3", "3|5|7"}, {"2", ""}, {"0", ""}, {"-1", "3|5|7"}};
    for (const auto& [limit, expected] : cases) {
        succeeded(
            describe("x\n7\n3\n5\n3\n", R"({"maxNOfDistinctValues": )" + std::string(limit) + "}"));
        EXPECT_EQ(valuesOf("x"), expected) << limit;
    }
}

TEST_F(Descriptives, HonoursItsSwitches)
{
    succeeded(describe("x,t\n1,a\n2,\"a  \"\n",
                       R"({"computeSummaryStats": false, "computeDistSummaryForString": false,
                           "trimTrailingBlank": true, "inputFieldList": ["t", "x"]})"));
    EXPECT_EQ(valuesOf("t"), "a");
    EXPECT_EQ(model().GetField(std::size_t{0})->GetName(), "t");
    EXPECT_TRUE(std::isnan(statistic("x", "mean")));
    EXPECT_EQ(statistic("x", "valid"), 2);
    EXPECT_EQ(member("stat.zip", "StatXML.xml").find("<Distribution>"), std::string::npos);
}

TEST_F(Descriptives, TakesDeclaredMissingValuesOfRowsForMissing)
{
    TestRows rows("rows", {}, {{1.0}, {2.0}, {-9.0}, {std::monostate()}, {INFINITY}});
    rows.model = R"(<DataModel><Field name="x" storage="real" measure="nominal"><Label>ecks</Label>
        <ValueLabels><Value value="1" label="one"/><Value value="-9" label="none"/></ValueLabels>
        <MissingValues><Value value="-9"/></MissingValues></Field></DataModel>)";
    succeeded(feed(rows,
                   "val out = [{\"name\": \"PMML\", \"uri\": \"$DIR/pmml.zip\"}, "
                   "{\"name\": \"StatXML\", \"uri\": \"$DIR/stat.zip\"}]\n"
                   "read({\"dataSource\": \"rows\"}) -> descriptives:descriptives({}, _, out)"));
    expectStatistics("x", {{"valid", 2}, {"missing", 3}, {"mean", 1.5}});
    EXPECT_EQ(valuesOf("x"), "1|2");
    EXPECT_EQ(model().GetField("x")->GetValues().front().GetLabel(), "one");
    EXPECT_EQ(model().GetField("x")->GetLabel(), "ecks");
    pugi::xml_document pmml;
    ASSERT_TRUE(pmml.load_string(member("pmml.zip", "PMML.xml").c_str()));
    const pugi::xml_node dictionary = pmml.child("PMML").child("DataDictionary");
    EXPECT_STREQ(dictionary.attribute("numberOfFields").value(), "1");
    EXPECT_STREQ(dictionary.child("DataField").child("Value").attribute("displayValue").value(),
                 "one");
    const pugi::xml_node statistics =
        pmml.select_node("//ModelStats/UnivariateStats[@field='x']").node();
    EXPECT_STREQ(statistics.child("Counts").attribute("totalFreq").value(), "5");
    EXPECT_STREQ(statistics.child("NumericInfo").attribute("mean").value(), "1.5");
}

TEST_F(Descriptives, WritesTextsThatXmlCannotHold)
{
    succeeded(describe("\"a<&\"\"\x01\",_x0001_\nx\x02,\"<DatasetSummaries>\"\n", "{}"));
    const CFMetaData fields = model();
    ASSERT_EQ(fields.FieldCount(), 2U);
    EXPECT_EQ(fields.GetField(std::size_t{0})->GetName(), "a<&\"\x01");
    EXPECT_EQ(valuesOf("a<&\"\x01"), "x\x02");
    EXPECT_EQ(valuesOf("_x0001_"), "<DatasetSummaries>");
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(member("stat.zip", "StatXML.xml").c_str()));
    EXPECT_STREQ(document.select_node("//FieldSummary[1]/@name").attribute().value(),
                 "a<&\"_x0001_");
    EXPECT_STREQ(document.select_node("//FieldSummary[2]/@name").attribute().value(),
                 "_x005F_x0001_");
}

TEST_F(Descriptives, DetectsTheIntervalOfDates)
{
    struct Case
    {
        const char* values;
        const char* unit; ///< empty for none
        double increment;
        int points;
        int missing;
        int duplicates;
    };
    const Case cases[] = {
        {"2020-03-01;2021-03-01;2023-03-01", "year", 1, 4, 1, 0},
        {"2020-01-31;2020-04-30;2020-10-31", "quarter", 1, 4, 1, 0},
        {"2020-01-15;2020-02-15;2020-02-15;2020-05-15", "month", 1, 5, 2, 1},
        {"2020-01-01;2020-03-01;2020-05-01;2020-09-01", "month", 2, 5, 1, 0},
        {"2023-12-25;2024-01-01;2024-01-15", "week", 1, 4, 1, 0},
        {"2024-02-28;2024-02-29;2024-03-02", "day", 1, 4, 1, 0},
        {"2024-02-28;2024-03-01;2024-03-05", "day", 2, 4, 1, 0},
        {"2020-01-01 22:30:00;2020-01-02 00:30:00;2020-01-02 04:30:00", "hour", 2, 4, 1, 0},
        {"2020-01-01 00:00:00;2020-01-01 00:00:45", "second", 45, 2, 0, 0},
        {"08:00:00;08:15:00;09:00:00", "minute", 15, 5, 2, 0},
        {"08:00:00;08:00:00.25;08:00:01", "second", 0.25, 5, 2, 0},
        {"2020-01-01;2020-01-01", "", 0, 1, 0, 1},
    };
    for (const Case& tested : cases) {
        std::istringstream list(tested.values);
        std::string csv = "d,n\n,1\n";
        for (std::string value; std::getline(list, value, ';');)
            csv += value + ",1\n";
        const auto result = succeeded(describe(csv, R"({"stdDateTimeFieldList": ["d"]})"));
        const json interval = intervals().at(0);
        const bool found = *tested.unit != '\0';
        EXPECT_EQ(interval["unit"], found ? json(tested.unit) : json()) << tested.values;
        EXPECT_EQ(interval["increment"], found ? json(tested.increment) : json()) << tested.values;
        EXPECT_EQ(interval["points"], tested.points) << tested.values;
        EXPECT_EQ(interval["missingPoints"], tested.missing) << tested.values;
        EXPECT_EQ(interval["duplicateRecords"], tested.duplicates) << tested.values;
        EXPECT_EQ(interval["missingRecords"], 1) << tested.values;
        EXPECT_EQ(interval["start"],
                  std::string(tested.values, 0, std::strcspn(tested.values, ";")));
        EXPECT_EQ(result.messages.empty(), found) << tested.values;
    }
}

TEST_F(Descriptives, DetectsTheIntervalOfPeriodFields)
{
    struct Case
    {
        const char* csv;
        const char* fields;
        const char* periods; ///< a list in JSON; empty for none
        const char* unit;
        int points;
        int missing;
        const char* end;
    };
    const Case cases[] = {
        {"y,month\n2020,11\n2020,12\n2021,2\n2021,13\n", R"(["y", "month"])", R"(["year","month"])",
         "month", 4, 1, R"({"y":2021,"month":2})"},
        {"y,q\n2020,4\n2021,1\n2021,3\n", R"(["y", "q"])", R"(["year","quarter"])", "quarter", 4, 1,
         R"({"y":2021,"q":3})"},
        {"Year,Week\n2020,52\n2020,53\n2021,1\n2021,3\n", R"(["Year", "Week"])",
         R"(["year","week"])", "week", 5, 1, R"({"Year":2021,"Week":3})"},
        {"Year,Day\n2020,366\n2021,1\n2021,3\n", R"(["Year", "Day"])", R"(["year","day"])", "day",
         4, 1, R"({"Year":2021,"Day":3})"},
        {"the hour,minute\n8,0\n8,30\n9,30\n8.5,0\n", R"(["the hour", "minute"])",
         R"(["hour","minute"])", "minute", 4, 1, R"({"the hour":9,"minute":30})"},
    };
    for (const Case& tested : cases) {
        succeeded(describe(tested.csv,
                           R"({"nonStdDateTimeFieldList": [)" + std::string(tested.fields) + "]}"));
        const json interval = intervals().at(0);
        EXPECT_EQ(interval["periods"], json::parse(tested.periods)) << tested.csv;
        EXPECT_EQ(interval["unit"], tested.unit) << tested.csv;
        EXPECT_EQ(interval["points"], tested.points) << tested.csv << interval;
        EXPECT_EQ(interval["missingPoints"], tested.missing) << tested.csv << interval;
        EXPECT_EQ(interval["end"], json::parse(tested.end)) << tested.csv;
    }
    // A finer period before a coarser one makes up nothing.
    const auto result = describe("month,year\n1,2020\n2,2020\n",
                                 R"({"nonStdDateTimeFieldList": [["month", "year"]]})");
    ASSERT_EQ(result.messages.size(), 1U);
    EXPECT_EQ(result.messages[0].first, "HVEDE0002W");
    EXPECT_TRUE(intervals().at(0)["unit"].is_null());
}

TEST_F(Descriptives, TellsOnceOfEachSettingThatIsNotDone)
{
    const auto result = succeeded(describe("x\n1\n", R"({"computeCustomPercentiles": false,
        "outlierHandlingMethod": "markOut", "useFeatureSelection": false,
        "measureHandling": "auto", "NumberOfThreads": 4, "computeSumaryStats": true})"));
    std::vector<std::string> told;
    for (const auto& [id, text] : result.messages)
        told.push_back(id + text.substr(text.find(" \""), text.find("\" ") - text.find(" \"") + 1));
    EXPECT_EQ(told, (std::vector<std::string>{
                        "HVEDE0001W \"measureHandling\"", "HVEDE0001W \"useFeatureSelection\"",
                        "HVEDE0001W \"NumberOfThreads\"", "HVEPL0015W \"computeSumaryStats\""}));
}

TEST_F(Descriptives, RefusesWhatItCannotTake)
{
    const std::pair<const char*, const char*> cases[] = {
        {R"({"inputFieldList": ["valve"]})", "HVEPL0005E"},
        {R"({"inputFieldList": "value"})", "HVEPL0004E"},
        {R"({"stdDateTimeFieldList": ["value"]})", "HVEPL0004E"},
        {R"({"nonStdDateTimeFieldList": [["text"]]})", "HVEPL0004E"},
        {R"({"nonStdDateTimeFieldList": ["value"]})", "HVEPL0004E"},
        {R"({"frequencyWeightField": "text"})", "HVEPL0004E"},
        {R"({"computeSummaryStats": "true"})", "HVEPL0004E"},
        {R"({"maxNOfDistinctValues": -2})", "HVEPL0004E"},
    };
    for (const auto& [settings, id] : cases) {
        const auto result = describe("value,text\n1,a\n", settings);
        EXPECT_EQ(result.errorId, id) << settings << " " << result.errorText;
        EXPECT_NE(result.errorText.find("descriptives:descriptives"), std::string::npos);
        EXPECT_EQ(files(), std::vector<std::string>{"in.csv"}) << settings;
    }
    EXPECT_NE(describe("value\n1\n", R"({"inputFieldList": ["valve"]})")
                  .errorText.find(R"(did you mean "value")"),
              std::string::npos);
    const std::pair<const char*, const char*> calls[] = {
        {"descriptives:descriptive({}, _, out)", "HVEPL0013E"},
        {"descriptives:descriptives(_, _, out)", "HVEPL0002E"},
        {"descriptives:descriptives({}, out, out)", "HVEPL0002E"},
        {"descriptives:descriptives({}, _)", "HVEPL0003E"},
        {"descriptives:descriptives({}, _, out) -> write({\"dataSource\": \"x\"})", "HVEPL0012E"},
        {R"(descriptives:descriptives({}, _, [{"name": "a", "uri": "$DIR/no/a"}]))", "HVEIO0015E"},
    };
    for (const auto& [call, id] : calls) {
        const auto result = run(outputs("JSON") + readCsv("in.csv") + " -> " + call);
        EXPECT_EQ(result.errorId, id) << call << " " << result.errorText;
    }
}

} // namespace
} // namespace EngineTest
