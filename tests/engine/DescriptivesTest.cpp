#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <iterator>
#include <limits>
#include <set>
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

std::string realText(double value)
{
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", value);
    // A column of whole numbers would be one of integers.
    return std::strpbrk(text, ".e") ? text : std::string(text) + ".0";
}

/// Values by their number, and what exact arithmetic makes of them.
struct MomentCase
{
    const char* name;
    int records;
    std::function<std::string(int)> value;
    std::array<double, 5> expected; ///< in the order of kMoments; NaN for one that is absent
    bool isWeighted = false;        ///< by 0.1 to 0.7 in turn
};
constexpr const char* kMoments[] = {"mean", "variance", "standardDeviation", "skewness",
                                    "kurtosis"};

/// The values, and what exact_moments.py prints for them.
std::vector<MomentCase> momentCases()
{
    const double none = std::nan("");
    const auto listed = [](std::vector<double> list) {
        return [list](int i) { return realText(list[static_cast<std::size_t>(i)]); };
    };
    return {
        {"large",
         1000,
         [](int i) { return realText(1e15 + 1 + i % 3); },
         {1000000000000002.0, 0.6676666666666666, 0.8171087238958269, 0.0018403381893834902,
          -1.5022518702802043}},
        {"skewed",
         1000,
         [](int i) {
             const int root = i * i % 997;
             return realText(1e14 + root * root / 64 / 16.0);
         },
         {100000000000324.72, 86280.5831264233, 293.7355666691102, 0.6121977038094765,
          -0.9265572134010861}},
        {"rising",
         5000,
         [](int i) { return realText(1e9 + i * i / 8.0); },
         {1001041354.1875, 867903604605.4688, 931613.4416191453, 0.6391760741358898,
          -0.8566792278306122}},
        {"outlier",
         2000,
         [](int i) { return realText(i == 0 ? -1e15 : i % 10 / 4.0); },
         {-499999999998.875, 5.000000000000011e+26, 22360679774997.92, -44.721359549995796,
          2000.0}},
        {"integers",
         100,
         [](int i) {
             return std::to_string((std::int64_t{1} << 53) + 1 + std::int64_t{i % 3} * (i % 5));
         },
         {9007199254740994.0, 5.908181818181818, 2.430675177431534, 1.0992993118078802,
          0.2082348286144291}},
        {"wide integers",
         10,
         [](int i) {
             return (i < 3 ? "-" : "") +
                    std::to_string(std::numeric_limits<std::int64_t>::max() - i);
         },
         {3.6893488147419105e+18, 7.939921894821898e+37, 8.910623937088748e+18, -1.0350983390135313,
          -1.2244897959183674}},
        {"weighted",
         1500,
         [](int i) { return realText(1e6 + i % 11 / 8.0); },
         {1000000.6238115096, 0.15656447903188608, 0.3956822955754858, 0.004300136194159271,
          -1.221070477272548},
         true},
        {"constant", 30, [](int) { return realText(0.1); }, {0.1, 0, 0, none, none}, true},
        {"huge",
         4,
         listed({1.7e308, -1.7e308, 1.5e308, 1e307}),
         {4e+307, none, 1.5705625319186329e+308, -0.991209662218918, -0.4742147552958365}},
        // Half of a sum is the negative of the other half.
        {"balanced",
         4,
         listed({1.5, -1.5, 2.5, -2.5}),
         {0.0, 5.666666666666667, 2.3804761428476167, 0.0, -4.339100346020762}},
        {"tiny",
         4,
         listed({1e-200, 2e-200, 4e-200, 5e-200}),
         {3e-200, 0.0, 1.8257418583505537e-200, 0.0, -3.3}},
    };
}

TEST_F(Descriptives, AgreesWithExactArithmetic)
{
    for (const MomentCase& tested : momentCases()) {
        SCOPED_TRACE(tested.name);
        std::string csv = "x,w\n";
        for (int i = 0; i < tested.records; ++i)
            csv += tested.value(i) + "," + realText((i % 7 + 1) / 10.0) + "\n";
        const char* const weight = R"(, "frequencyWeightField": "w")";
        succeeded(describe(csv, R"({"inputFieldList": ["x"], "maxNOfDistinctValues": 0)" +
                                    std::string(tested.isWeighted ? weight : "") + "}"));
        for (std::size_t i = 0; i < std::size(kMoments); ++i) {
            const double found = statistic("x", kMoments[i]);
            const double expected = tested.expected[i];
            if (std::isnan(expected))
                EXPECT_TRUE(std::isnan(found)) << kMoments[i] << " " << found;
            else
                EXPECT_NEAR(found, expected, expected == 0 ? 1e-12 : 1e-10 * std::abs(expected))
                    << kMoments[i];
        }
        EXPECT_GE(statistic("x", "mean"), statistic("x", "minimum"));
        EXPECT_LE(statistic("x", "mean"), statistic("x", "maximum"));
    }
}

TEST_F(Descriptives, GivesTheSameBitsOnEachRun)
{
    // More records than the threads of the database take at once.
    std::string csv = "x,w\n";
    for (int i = 0; i < 400000; ++i)
        csv += std::to_string(i % 1013) + "." + std::to_string(i % 7) + ",0." +
               std::to_string(i % 9 + 1) + "\n";
    for (const char* weight : {"", R"(, "frequencyWeightField": "w")"}) {
        std::set<std::string> results;
        for (int run = 0; run < 5; ++run) {
            succeeded(describe(csv, R"({"inputFieldList": ["x"], "maxNOfDistinctValues": 0)" +
                                        std::string(weight) + "}"));
            results.insert(member("stat.zip", "StatXML.xml"));
        }
        EXPECT_EQ(results.size(), 1U);
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
        {"2023-01-30;2023-02-28;2023-03-30;2023-05-30", "month", 1, 5, 1, 0},
        {"2024-02-29;2024-04-30;2024-06-30", "month", 2, 3, 0, 0},
        {"2023-02-28;2023-03-29", "day", 29, 2, 0, 0},
        {"2023-01-29;2023-02-28;2023-03-30", "day", 30, 3, 0, 0},
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
        {"hour,minute\n23,0\n23,30\n24,0\n23,60\n", R"(["hour", "minute"])", R"(["hour","minute"])",
         "minute", 2, 0, R"({"hour":23,"minute":30})"},
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
        "useMissingValueHandling": true, "NumberOfThreads": 4, "computeSumaryStats": true,
        "useSupervisedMerging": true, "targetField": "x"})"));
    std::vector<std::string> told;
    for (const auto& [id, text] : result.messages)
        told.push_back(id + text.substr(text.find(" \""), text.find("\" ") - text.find(" \"") + 1));
    EXPECT_EQ(told, (std::vector<std::string>{"HVEDE0001W \"useFeatureSelection\"",
                                              "HVEDE0001W \"useMissingValueHandling\"",
                                              "HVEDE0001W \"NumberOfThreads\"",
                                              "HVEPL0015W \"computeSumaryStats\"",
                                              "HVEDE0003W \"useSupervisedMerging\""}));
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
        {R"({"computeCustomPercentiles": "5,x"})", "HVEPL0004E"},
        {R"({"computeCustomPercentiles": [101]})", "HVEPL0004E"},
        {R"({"customPercentilesAccuracy": "sketch"})", "HVEPL0004E"},
        {R"({"outlierDetectionMethod": "z"})", "HVEPL0004E"},
        {R"({"measureHandling": "auto"})", "HVEPL0004E"},
        {R"({"outlierHandlingMethod": "trim"})", "HVEPL0004E"},
        {R"({"identifyExtremeOutliers": true, "computeSummaryStats": false})", "HVEPL0004E"},
        {R"({"computeDistSummaryForNumeric": "bins", "computeSummaryStats": false})", "HVEPL0004E"},
        {R"({"computeAllTargetInputPairs": true})", "HVEPL0004E"},
        {R"({"targetField": "valve"})", "HVEPL0004E"},
        {R"({"groupField": "text", "groupCount": "1"})", "HVEPL0004E"},
        {R"({"groupField": "value", "groupCount": "0"})", "HVEPL0004E"},
        {R"({"groupField": "value"})", "HVEPL0004E"},
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
