#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>

#include <nlohmann/json.hpp>

#include "engine/EngineFixture.h"
#include "engine/TableView.h"
#include "temporal/DocumentChecks.h"
#include "temporal/ExplainedSamples.h"

// Jobs that explain a model: valid documents, and the figures of the model and its data.

namespace TemporalTest {
namespace {

using EngineTest::EngineFixture;
using EngineTest::readCsv;
using EngineTest::RecordingListener;
using EngineTest::TableView;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr int kDays = 20;
/// What the library asks for.
constexpr const char* kDiagrams = R"({"artifacts": [
    {"name": "interpretation.ImpactDiagramEffects", "target": [["north", "sales"]], "level": 2},
    {"name": "interpretation.ImpactDiagramCauses", "target": [["north", "sales"]], "level": 2}],
    "locale": "en_US", "timeFormat": "hh:mm:ss", "isEncoded": false})";
constexpr const char* kAll = R"({"artifacts": [{"name": "network"}, {"name": "fit"},
    {"name": "equations"}, {"name": "outliers"},
    {"name": "fit", "target": [["south", "sales"]]},
    {"name": "rootCause", "target": [["south", "sales"]], "level": 3},
    {"name": "interpretation.ImpactDiagramEffects", "target": [["north", "sales"], ["south",
     "visits"]], "level": 9},
    {"name": "interpretation.ImpactDiagramCauses", "target": [["south", "visits"]]}]})";

/// South visits jump on the 11th day, south sales on the 16th.
double jumps(std::size_t series, Eigen::Index point)
{
    if (series == kSouthVisits && point == 10)
        return 40;
    return ripple(series, point) / 10 + (series == kSouthSales && point == 15 ? 9 : 0);
}

class TcmOutput : public EngineFixture
{
protected:
    TcmOutput()
    {
        writeSample(_model, path("model.tcm"));
        _values = simulated(_model, kDays, jumps);
    }

    /// The records of the data, one a day and region.
    std::string records(bool byRegion = false) const
    {
        std::string csv = "day,region,sales,visits,$FutureFlag\n";
        for (int i = 0; i < 2 * kDays; ++i) {
            const int day = byRegion ? i % kDays : i / 2;
            const int region = byRegion ? i / kDays : i % 2;
            char line[120];
            std::snprintf(line, sizeof line, "2024-01-%02d,%s,%.17g,%.17g,0\n", day + 1,
                          region == 0 ? "north" : "south", _values(day, 2 * region),
                          _values(day, 2 * region + 1));
            csv += line;
        }
        return csv;
    }

    RecordingListener explain(const std::string& settings, const std::string& csv = "",
                              const std::string& containers = kContainers)
    {
        if (!csv.empty())
            write("in.csv", csv);
        return run("val conf = " + settings +
                   "\nval model = [{\"name\": \"TCM\", \"uri\": \"$DIR/model.tcm\"}]\n"
                   "val out = " +
                   containers + "\n" + (csv.empty() ? "" : readCsv("in.csv") + " -> ") +
                   "OutputComponent:TCMOutputComponent(conf, model, out)");
    }

    /// What the job writes, checked against the schemas.
    json statistics()
    {
        expectValid(HV_SCHEMAS "/tcm-statistics.schema.json", "statJson.json",
                    member("out.zip", "statJson.json"));
        expectValid(HV_RESULT_SCHEMA, "Results.json", member("results.zip", "Results.json"));
        return writtenStatistics();
    }
    json writtenStatistics() const
    {
        return json::parse(member("out.zip", "statJson.json")).at("artifacts");
    }
    json results() const
    {
        return json::parse(member("results.zip", "Results.json")).at("temporalCausalModel");
    }

    static constexpr const char* kContainers =
        R"([{"export": true, "name": "tcmStatJson", "uri": "$DIR/out.zip"},
            {"export": true, "name": "Results", "uri": "$DIR/results.zip"}])";

    EmbeddedHV::TcmModel _model = sampleModel();
    Eigen::MatrixXd _values;
};

std::vector<std::string> idsOf(const json& objects)
{
    std::vector<std::string> ids;
    for (const json& object : objects)
        ids.push_back(object.contains("from") ? object["from"].get<std::string>() + ">" +
                                                    object["to"].get<std::string>()
                                              : object["id"].get<std::string>());
    return ids;
}

TEST_F(TcmOutput, TellsWhatTheModelSays)
{
    _model.outliers = {{kSouthSales, 15, 20.5, 11.5, 1e-6}};
    writeSample(_model, path("model.tcm"));
    EXPECT_TRUE(succeeded(explain(kAll)).messages.empty());
    const json all = statistics();
    ASSERT_EQ(all.size(), 9U) << "an artifact for each target of an impact diagram";
    EXPECT_THAT(idsOf(all[0]["nodes"]), ElementsAre("1-1", "1-2", "2-1", "2-2"));
    EXPECT_THAT(idsOf(all[0]["edges"]), ElementsAre("2-2>1-1", "2-1>1-1", "1-1>1-2", "1-2>2-1"));
    EXPECT_EQ(all[0]["nodes"][0]["rSquared"], 0.75);
    EXPECT_EQ(all[0]["nodes"][0]["name"], json({"north", "sales"}));
    EXPECT_EQ(all[0]["nodes"][3]["isTarget"], false);
    EXPECT_EQ(all[0]["edges"][0]["lag"], 2);
    EXPECT_THAT(idsOf(all[1]["targets"]), ElementsAre("1-1", "1-2", "2-1"));
    EXPECT_THAT(idsOf(all[2]["equations"][0]["predictors"]), ElementsAre("1-1", "2-2", "2-1"));
    EXPECT_EQ(all[2]["equations"][0]["terms"][2]["coefficient"], -0.75);
    EXPECT_EQ(all[3]["count"], 1);
    EXPECT_EQ(all[3]["outliers"][0]["time"], "2024-01-16");
    EXPECT_EQ(all[3]["outliers"][0]["residual"], 9);
    EXPECT_THAT(idsOf(all[4]["targets"]), ElementsAre("2-1"));
    EXPECT_TRUE(all[5]["outliers"][0]["departure"].is_null()) << "no residuals are known";
    EXPECT_THAT(idsOf(all[6]["edges"]), ElementsAre("1-1>1-2", "1-2>2-1", "2-1>1-1"));
    EXPECT_EQ(all[7]["target"], json::parse(R"([["south", "visits"]])"));
    EXPECT_FALSE(all[7]["nodes"][0].contains("latestChange"));
    EXPECT_TRUE(all[8]["edges"].empty());
    EXPECT_EQ(all[8]["level"], 1);
}

TEST_F(TcmOutput, ContributionsOfADiagramAddUp)
{
    for (const bool byRegion : {false, true}) {
        succeeded(explain(kDiagrams, records(byRegion)));
        const json all = statistics();
        for (const json& diagram : all)
            for (const json& node : diagram["nodes"]) {
                if (!node["isTarget"].get<bool>())
                    continue;
                SCOPED_TRACE(diagram["name"].dump() + node["name"].dump());
                const json& latest = node["latestChange"];
                EXPECT_EQ(latest["time"], "2024-01-20");
                double sum = latest["ownPast"].get<double>() + latest["otherCauses"].get<double>() +
                             latest["unexplained"].get<double>();
                for (const json& edge : diagram["edges"])
                    if (edge["to"] == node["id"])
                        sum += edge["contribution"].get<double>();
                EXPECT_NEAR(sum, latest["change"].get<double>(), 1e-9);
            }
        EXPECT_NEAR(all[1]["nodes"][0]["latestChange"]["change"].get<double>(),
                    _values(19, kNorthSales) - _values(18, kNorthSales), 1e-9);
        EXPECT_EQ(all[1]["nodes"][0]["latestChange"]["otherCauses"], 0) << "all are drawn";
    }
}

TEST_F(TcmOutput, FindsOutliersInTheDataAndWhereTheyComeFrom)
{
    succeeded(explain(kAll, records()));
    const json all = statistics();
    const json& outlier = all[5]["outliers"][0];
    EXPECT_THAT(idsOf(all[3]["outliers"]), ElementsAre("2-1"));
    EXPECT_EQ(outlier["time"], "2024-01-16");
    EXPECT_NEAR(outlier["residual"].get<double>(), jumps(kSouthSales, 15), 1e-9);
    EXPECT_EQ(outlier["causes"][0]["id"], "2-2");
    EXPECT_EQ(outlier["causes"][0]["time"], "2024-01-11");
    EXPECT_EQ(idsOf(outlier["causes"][0]["path"]).back(), "2-1");
    double sum = outlier["residual"].get<double>() + outlier["otherCauses"].get<double>();
    for (const json& cause : outlier["causes"])
        sum += cause["contribution"].get<double>();
    EXPECT_NEAR(sum, outlier["departure"].get<double>(), 1e-9);
}

TEST_F(TcmOutput, ShowsTablesAndCharts)
{
    succeeded(explain(kAll, records()));
    statistics();
    const json shown = results();
    const TableView fit(shown["fit"]["table"]);
    EXPECT_THAT(fit.leaves(0), ElementsAre("north, sales", "north, visits", "south, sales"));
    EXPECT_EQ(fit.cell({"south, sales", "R Squared"}), 0.75);
    const TableView edges(shown["network"]["table"]);
    EXPECT_EQ(edges.cell({"north, sales/south, visits", "Sum of Coefficients"}), -0.25);
    EXPECT_EQ(edges.cell({"north, sales/Own past", "Lag"}), 1);
    const TableView effects(shown["effects"]["s2"]["table"]);
    EXPECT_THAT(effects.leaves(0), ElementsAre("Level 1/north, sales \u2192 north, visits",
                                               "Level 2/north, visits \u2192 south, sales",
                                               "Level 3/south, sales \u2192 north, sales"));
    EXPECT_FALSE(effects.cell({effects.leaves(0)[0], "Contribution to Latest Change"}).is_null());
    const TableView outliers(shown["outliers"]["table"]);
    EXPECT_THAT(outliers.leaves(0), ElementsAre("south, sales/2024-01-16"));
    EXPECT_EQ(EngineTest::shownText(shown["notifications"][0]),
              "south, visits is influenced by no other series.");
    const json& chart = shown["series"]["s1"]["data"]["values"];
    ASSERT_EQ(chart.size(), kDays);
    EXPECT_NEAR(chart[15]["actual"].get<double>(), _values(15, kSouthSales), 1e-9);
    EXPECT_NEAR(chart[15]["predicted"].get<double>(),
                _values(15, kSouthSales) - jumps(kSouthSales, 15), 1e-9);
    EXPECT_TRUE(chart[0]["predicted"].is_null()) << "nothing precedes the first point";
    EXPECT_EQ(shown["effects"]["s2"]["chart"]["datasets"]["nodes"][2]["level"], 2);
}

TEST_F(TcmOutput, Forecasts)
{
    const char* const settings = R"({"artifacts": [{"name": "forecast", "forecastSpan": 2,
        "target": [["south", "visits"], ["north", "sales"]]}]})";
    // Without data the forecast goes on from the end of the training, which is 0.
    for (const bool hasData : {false, true}) {
        succeeded(explain(settings, hasData ? records() : ""));
        const json series = statistics()[0]["series"];
        const json& points = series[0]["points"];
        const std::size_t end = hasData ? kDays : 2;
        ASSERT_EQ(points.size(), end + 2);
        const double last = hasData ? _values(kDays - 1, kSouthVisits) : 0;
        EXPECT_EQ(points[end - 1]["isFuture"], false);
        EXPECT_NEAR(points[end - 1]["actual"].get<double>(), last, 1e-9);
        EXPECT_EQ(points[end]["isFuture"], true);
        EXPECT_EQ(points[end]["time"], "2024-01-21");
        EXPECT_TRUE(points[end]["actual"].is_null());
        EXPECT_NEAR(points[end]["predicted"].get<double>(), 3 + 0.5 * last, 1e-9);
        EXPECT_NEAR(points[end + 1]["predicted"].get<double>(), 4.5 + 0.25 * last, 1e-9);
        // The residual variance is 1.
        EXPECT_NEAR(points[end]["upper"].get<double>() - points[end]["lower"].get<double>(),
                    2 * 1.959964, 1e-5);
        EXPECT_THAT(idsOf(series), ElementsAre("2-2", "1-1"));
        EXPECT_EQ(results()["forecast"]["s2"]["data"]["values"].size(), end + 2);
    }
}

/// Data of a kind, and how they are prepared.
struct DataKind
{
    const char* name;
    const char* header;
    std::function<std::string(int point)> time;
    std::vector<std::string> dimensions;
    const char* preparation;
    const char* target;
    const char* label; ///< of the first point
};

std::vector<DataKind> dataKinds()
{
    const auto written = [](const char* format, int first, int second) {
        char text[60];
        std::snprintf(text, sizeof text, format, first, second);
        return std::string(text);
    };
    const auto months = [=](int i) { return written("%d,%d,", 2000 + i / 12, 1 + i % 12); };
    const char* const cyclic = "year,month,region,sales,visits";
    const char* const cycles =
        R"("dimFieldList": ["region"], "dateTimeField": "", "cyclicFieldList": ["year", "month"])";
    return {
        {"timestamps, reals",
         "at,region,sales,visits",
         [=](int i) { return written("2024-03-%02d %02d:30:00,", 1 + i / 24, i % 24); },
         {"1.5,", "2.0,"},
         R"("dimFieldList": ["region"], "dateTimeField": "at", "cyclicFieldList": [])",
         R"(["2", "visits"])",
         "2024-03-01 00:30:00"},
        {"dates as dimensions",
         cyclic,
         months,
         {"2024-02-01,", "2024-02-29,"},
         cycles,
         R"(["2024-02-29", "visits"])",
         "2000, 1"},
        {"integers beyond 2^53",
         cyclic,
         months,
         {"9007199254740992,", "9007199254740993,"},
         cycles,
         R"(["9007199254740993", "visits"])",
         "2000, 1"},
    };
}

TEST_F(TcmOutput, TakesRecordsWithNamesOfAnyKind)
{
    constexpr int kMany = 60;
    for (const DataKind& kind : dataKinds()) {
        SCOPED_TRACE(kind.name);
        std::string csv = kind.header + std::string("\n");
        for (int point = 0; point < kMany; ++point)
            for (std::size_t i = 0; i < kind.dimensions.size(); ++i)
                csv += kind.time(point) + kind.dimensions[i] +
                       std::to_string(ripple(2 * i, point)) + "," +
                       std::to_string(ripple(2 * i + 1, point)) + "\n";
        write("in.csv", csv);
        const std::string prepared =
            "val conf = {\"metricFieldList\": [\"sales\", \"visits\"], " +
            std::string(kind.preparation) +
            "}\nval prep = [{\"name\": \"JSON\", \"uri\": "
            "\"$DIR/prep.zip\"}]\nval model = [{\"name\": \"TCM\", \"uri\": "
            "\"$DIR/model.tcm\"}]\nval out = " +
            std::string(kContainers) + "\n" + readCsv("in.csv") +
            " -> tsdp:tsdp(conf, _, prep) -> ";
        const std::string explained =
            R"(OutputComponent:TCMOutputComponent({"artifacts": [{"name": "outliers"},
               {"name": "interpretation.ImpactDiagramCauses", "level": 2, "target": [)" +
            std::string(kind.target) + R"(]}, {"name": "forecast", "target": [)" + kind.target +
            "]}]}, model, out)";
        succeeded(run(prepared + R"(tcm:train({"lags": 2, "outlierLevel": 0.9}, prep, model))"));
        succeeded(run(prepared + explained));
        const json numbered = statistics();
        succeeded(
            run(prepared + "rtsdp:rtsdp({\"exportFutureFlag\": true}, prep, _) -> " + explained));
        EXPECT_EQ(numbered, writtenStatistics())
            << "from records with names and from prepared ones";
        EXPECT_EQ(numbered[2]["series"][0]["points"][0]["time"], kind.label);
        EXPECT_EQ(numbered[2]["series"][0]["points"].size(), kMany);
        EXPECT_FALSE(numbered[0]["outliers"].empty());
        EXPECT_TRUE(numbered[1]["nodes"][0].contains("latestChange"));
    }
}

TEST_F(TcmOutput, NamesSeriesByTheirIdsWhereAsked)
{
    succeeded(explain(R"({"artifacts": [{"name": "interpretation.ImpactDiagramEffects",
        "target": [["2-2"]], "level": 1}], "isEncoded": true, "timeFormat": "hh:mm"})"));
    const json all = statistics();
    EXPECT_EQ(all[0]["target"], json::parse(R"([["2-2"]])"));
    EXPECT_EQ(all[0]["nodes"][1]["name"], json({"1-1"}));
}

TEST_F(TcmOutput, TellsOfSettingsWithoutEffect)
{
    const RecordingListener listener = succeeded(explain(
        R"({"artifacts": [{"name": "network", "levl": 2}], "locale": "de_DE",
            "timeFormat": "h a", "isEncodet": true})"));
    std::vector<std::string> messages;
    for (const auto& [id, text] : listener.messages)
        messages.push_back(id + " " + text);
    const std::string step = "OutputComponent:TCMOutputComponent: the setting ";
    EXPECT_THAT(
        messages,
        ElementsAre("HVEPL0015W " + step + "\"artifacts[0].levl\" is not known here and is ignored",
                    "HVETC0060W " + step +
                        "\"timeFormat\" is \"h a\"; times are written as hh:mm:ss",
                    "HVEPL0015W " + step +
                        "\"isEncodet\" is not known here and is ignored; did you mean "
                        "\"isEncoded\"?"));
}

TEST_F(TcmOutput, RefusesBadSettings)
{
    const auto artifact = [](const std::string& members) {
        return R"({"artifacts": [{"name": "interpretation.ImpactDiagramCauses", )" + members +
               "}]}";
    };
    const std::pair<std::string, const char*> cases[] = {
        {"{}", "HVEPL0003E %: the setting \"artifacts\" is missing"},
        {R"({"artifacts": {}})", "\"artifacts\" must be a list, not an object"},
        {R"({"artifacts": ["fit"]})", "\"artifacts[0]\" must be an object, not a text"},
        {R"({"artifacts": [{}]})", "\"artifacts[0].name\" is missing"},
        {R"({"artifacts": [{"name": "netwrk"}]})", "\"artifacts[0].name\" is \"netwrk\", which is "
                                                   "not an artifact; did you mean \"network\"?"},
        {artifact(R"("level": 1)"), "\"artifacts[0].target\" is missing"},
        {artifact(R"("target": [])"), "\"artifacts[0].target\" names no series"},
        {artifact(R"("target": [["nort", "sales"]])"),
         "HVETC0024E %: the setting \"artifacts[0].target[0]\" names \"nort\", which is not a "
         "value of \"region\" in the model; did you mean \"north\"?"},
        {R"({"isEncoded": true, "artifacts": [{"name": "fit", "target": [["north", "sales"]]}]})",
         "\"artifacts[0].target[0]\" is not a list of one text, the id of a series"},
        {R"({"isEncoded": true, "artifacts": [{"name": "fit", "target": [["3-1"]]}]})",
         "names the id \"3-1\", which no series of the model has"},
        {R"({"artifacts": [{"name": "forecast", "target": [["north", "sales"]],
             "forecastSpan": -1}]})",
         "\"artifacts[0].forecastSpan\" is -1, not a number from 0 to 100000"},
        {R"({"artifacts": [{"name": "forecast", "target": [["north", "sales"]],
             "confidenceLevel": 95}]})",
         "\"artifacts[0].confidenceLevel\" is not a number between 0 and 1"},
        {artifact(R"("target": [["north", "sales"]], "level": 0)"),
         "\"artifacts[0].level\" is 0, not 1 or more"},
        {artifact(R"("target": [["north", "sales"]], "level": 1.5)"),
         "\"artifacts[0].level\" must be a whole number"},
        {R"({"artifacts": [], "isEncoded": "no"})", "\"isEncoded\" must be true or false"},
    };
    for (const auto& [settings, fault] : cases) {
        std::string expected = fault;
        if (const auto at = expected.find('%'); at != std::string::npos)
            expected.replace(at, 1, "OutputComponent:TCMOutputComponent");
        EXPECT_THAT(explain(settings).fault(), HasSubstr(expected)) << settings;
    }
    EXPECT_THAT(files(), ElementsAre("model.tcm")) << "nothing is left behind";
}

TEST_F(TcmOutput, RefusesRecordsOfAnotherKind)
{
    const std::string header = "day,region,sales,visits\n";
    const std::pair<std::string, const char*> cases[] = {
        {"region,sales,visits\nnorth,1,2\n",
         "no field \"day\", which is a time field of the model"},
        {"day,sales,visits\n2024-01-01,1,2\n",
         "no field \"region\", which is a dimension of the model"},
        {"day,region,x\n2024-01-01,north,1\n",
         "has none of the model's metrics, which are \"sales\", \"visits\""},
        {"day,region,sales,visits\n2024-01-01,north,a,2\n",
         "the field \"sales\" of the input, which is a metric of the model, is not a number"},
        {header + "2024-01-02,north,1,2\n",
         "the input begins at the time \"2024-01-02\", not at \"2024-01-01\" as the training data"},
        {header + "2024-01-01,west,1,2\n", "has no record of a series of the model"},
        {header + "2024-01-01,north,1,2\n2024-01-02,south,1,2\n",
         "record 2 of the input is of the time \"2024-01-02\", but other series have "
         "\"2024-01-01\" there"},
        {header + "2024-01-01,north,1,2\n2024-01-01,south,1,2\n2024-01-02,north,1,2\n",
         "a series ends at the time \"2024-01-01\", but others at \"2024-01-02\""},
    };
    for (const auto& [csv, fault] : cases)
        EXPECT_THAT(explain(kDiagrams, csv).fault(),
                    testing::AllOf(HasSubstr("HVETC0061E OutputComponent:TCMOutputComponent: "),
                                   HasSubstr(fault)))
            << csv;
    EXPECT_THAT(files(), ElementsAre("in.csv", "model.tcm"));
    // A missing metric gets a message. Its series have no values.
    const RecordingListener listener = succeeded(
        explain(kDiagrams, "day,region,visits\n2024-01-01,north,1\n2024-01-02,north,2\n"));
    ASSERT_EQ(listener.messages.size(), 1U);
    EXPECT_THAT(listener.messages[0].second, HasSubstr("have no values: \"sales\""));
    EXPECT_FALSE(statistics()[0]["nodes"][0].contains("latestChange"));
}

TEST_F(TcmOutput, NeedsAModelAndAPlaceForTheResult)
{
    const std::string call = R"(OutputComponent:TCMOutputComponent({"artifacts": []}, )";
    const std::pair<std::string, const char*> cases[] = {
        {"_, [{\"name\": \"a\", \"uri\": \"$DIR/o.zip\"}])", "no input container is given"},
        {"[], [{\"name\": \"a\", \"uri\": \"$DIR/o.zip\"}])",
         "0 input containers are given, not one with the model"},
        {"[{\"name\": \"TCM\", \"uri\": \"$DIR/model.tcm\"}], _)", "no output container is given"},
        {"[{\"name\": \"TCM\", \"uri\": \"$DIR/none\"}], [{\"name\": \"a\", \"uri\": "
         "\"$DIR/o.zip\"}])",
         "HVEIO0001E"},
    };
    for (const auto& [rest, fault] : cases)
        EXPECT_THAT(run(call + rest).fault(), HasSubstr(fault)) << rest;
    write("model.tcm", read("model.tcm").substr(0, 900));
    EXPECT_THAT(explain(kDiagrams).fault(), HasSubstr("model.tcm"));
    EXPECT_THAT(files(), ElementsAre("model.tcm"));
}

} // namespace
} // namespace TemporalTest
