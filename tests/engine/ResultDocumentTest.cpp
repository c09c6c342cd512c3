#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <map>
#include <random>

#include <nlohmann/json.hpp>

#include "components/descriptives/summary/BinEdges.h"
#include "engine/EngineFixture.h"
#include "engine/TableView.h"
#include "engine/TestRows.h"

// The result document of the component descriptives: valid by its schema, and its figures those of
// the records.

namespace EngineTest {
namespace {

using nlohmann::json;

class ResultDocument : public EngineFixture
{
protected:
    static constexpr const char* kResults = R"({"name": "Results", "uri": "$DIR/results.zip"})";

    /// Describes records, leaves stat.zip as well, and gives the document.
    json describe(const std::string& input, const std::string& settings = "{}",
                  const Setup& setup = {})
    {
        succeeded(run("val conf = " + settings +
                          "\nval out = [{\"name\": \"StatXML\", \"uri\": \"$DIR/stat.zip\"}, " +
                          kResults + "]\n" + input + " -> descriptives:descriptives(conf, _, out)",
                      setup));
        const std::string text = member("results.zip", "Results.json");
        write("Results.json", text);
        const std::string command =
            std::string(HV_VALIDATE_RESULT) + " '" + path("Results.json") + "'";
        EXPECT_EQ(std::system(command.c_str()), 0) << text.substr(0, 2000);
        return json::parse(text);
    }

    json describeCsv(const std::string& csv, const std::string& settings = "{}")
    {
        write("in.csv", csv);
        return describe(readCsv("in.csv"), settings);
    }

    json describeRows(const char* model, const std::vector<std::vector<TestRows::Value>>& values)
    {
        TestRows rows("rows", {}, values);
        rows.model = model;
        return describeRows(rows);
    }

    json describeRows(TestRows& rows, const std::string& settings = "{}")
    {
        return describe("read({\"dataSource\": \"rows\"})", settings,
                        [&](EmbeddedHV::Execution& execution) {
                            execution.addInputIterator(nullptr, &rows, nullptr);
                        });
    }
};

TableView statistics(const json& document)
{
    return TableView(document.at("descriptives").at("statistics").at("table"));
}

json part(const json& document, const char* kind, const char* key)
{
    return document.at("descriptives").at(kind).at(key);
}

struct Record
{
    double x;
    int group;
    int weight;
};

/// Records in which nothing is regular, and each repeated as often as its weight says.
std::vector<Record> sample(std::string& csv)
{
    std::mt19937 random(20240229);
    std::vector<Record> repeated;
    csv = "x,g,w\n";
    for (int i = 0; i < 300; ++i) {
        const Record record{static_cast<double>(random() % 100000) / 64, int(random() % 5),
                            int(random() % 4)};
        csv += json(record.x).dump() + "," + std::string(1, static_cast<char>('a' + record.group)) +
               "," + std::to_string(record.weight) + "\n";
        repeated.insert(repeated.end(), static_cast<std::size_t>(record.weight), record);
    }
    std::sort(repeated.begin(), repeated.end(),
              [](const Record& a, const Record& b) { return a.x < b.x; });
    return repeated;
}

double powerSum(const std::vector<Record>& records, double mean, int power)
{
    long double sum = 0;
    for (const Record& record : records)
        sum += std::pow(static_cast<long double>(record.x) - mean, power);
    return static_cast<double>(sum);
}

TEST_F(ResultDocument, ShowsTheFiguresOfWeightedRecords)
{
    std::string csv;
    const std::vector<Record> all = sample(csv);
    const json document =
        describeCsv(csv, R"({"frequencyWeightField": "w", "inputFieldList": ["x", "g"]})");

    const double n = static_cast<double>(all.size());
    const double mean = powerSum(all, 0, 1) / n;
    const double s2 = powerSum(all, mean, 2) / (n - 1);
    const auto quartile = [&](double part) {
        const double place = (n - 1) * part;
        const double below = all[static_cast<std::size_t>(place)].x;
        return below + (place - std::floor(place)) *
                           (all[static_cast<std::size_t>(std::ceil(place))].x - below);
    };
    const TableView table = statistics(document);
    const std::pair<const char*, double> expected[] = {
        {"N/Valid", n},
        {"N/Missing", 0},
        {"Mean", mean},
        {"Variance", s2},
        {"Std. Deviation", std::sqrt(s2)},
        {"Skewness", n * powerSum(all, mean, 3) / ((n - 1) * (n - 2) * std::pow(s2, 1.5))},
        {"Minimum", all.front().x},
        {"Maximum", all.back().x},
        {"Quartiles/First", quartile(0.25)},
        {"Quartiles/Median", quartile(0.5)},
        {"Quartiles/Third", quartile(0.75)}};
    for (const auto& [column, value] : expected)
        EXPECT_NEAR(table.cell({"x", column}).get<double>(), value, 1e-9 * (1 + std::abs(value)))
            << column;
    const double counted = table.cell({"x", "Unweighted N/Valid"});
    EXPECT_EQ(table.titleNotes(), "Records left out, since their weight is missing, not above 0 or "
                                  "infinite: " +
                                      json(300.0 - counted).dump());

    std::map<int, double> groups;
    for (const Record& record : all)
        ++groups[record.group];
    const TableView frequencies(part(document, "frequencies", "f2"));
    double sum = 0;
    for (const auto& [group, count] : groups) {
        const std::string row = std::string("Valid/") + static_cast<char>('a' + group);
        sum += count;
        EXPECT_EQ(frequencies.cell({"Weighted", row, "Frequency"}), count);
        EXPECT_NEAR(frequencies.cell({"Weighted", row, "Cumulative Percent"}).get<double>(),
                    100 * sum / n, 1e-9);
    }
    EXPECT_EQ(frequencies.cell({"Unweighted", "Valid/Total", "Frequency"}), counted);

    const json bins = part(document, "histograms", "f1").at("data").at("values");
    EXPECT_GT(bins.size(), 5U);
    EXPECT_THAT(part(document, "histograms", "f1").at("description").get<std::string>(),
                testing::HasSubstr(" values in " + std::to_string(bins.size()) + " bins"));
    for (const json& bin : bins)
        EXPECT_EQ(bin.at("count"), std::count_if(all.begin(), all.end(),
                                                 [&](const Record& record) {
                                                     return record.x >= bin["x"] &&
                                                            record.x < bin["end"];
                                                 }))
            << bin;
}

TEST_F(ResultDocument, TellsWhyAStatisticIsNotThere)
{
    const json document =
        describeRows(R"(<DataModel><Field name="one" storage="real" measure="continuous"/>
        <Field name="same" storage="integer" measure="continuous"/>
        <Field name="none" storage="real" measure="continuous"/>
        <Field name="huge" storage="real" measure="continuous"/>
        <Field name="text" storage="string" measure="nominal"/></DataModel>)",
                     {{1.0, 5.0, NAN, 1e200, "a"},
                      {NAN, 5.0, NAN, -1e200, "b"},
                      {NAN, 5.0, NAN, NAN, "c"},
                      {NAN, 5.0, NAN, NAN, "d"}});
    const TableView table = statistics(document);
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"one", "Variance", "There are too few valid values."},
        {"one", "Quartiles/Median", ""},
        {"same", "Variance", ""},
        {"same", "Skewness", "All valid values are the same."},
        {"none", "Minimum", "There is no valid value."},
        {"huge", "Variance", "The result is beyond the range of numbers."},
        {"huge", "Std. Deviation", ""},
        {"huge", "Kurtosis", "There are too few valid values."},
        {"text", "Mean", ""}};
    for (const auto& [field, column, note] : cases)
        EXPECT_EQ(table.notes({field, column}), note) << field << " " << column;
    EXPECT_EQ(table.cell({"same", "Variance"}), 0);
    EXPECT_TRUE(table.cell({"text", "Mean"}).is_null());
    EXPECT_TRUE(table.cell({"one", "Variance"}).is_null());
    EXPECT_EQ(table.cell({"huge", "Variance"}), 0);
    EXPECT_TRUE(table.format({"huge", "Variance"}).at("positiveInfinity").get<bool>());
    EXPECT_NEAR(table.cell({"huge", "Std. Deviation"}).get<double>() / 1e200, std::sqrt(2), 1e-12);
    // A field without values has no chart, one with a single value has a bin for it.
    EXPECT_FALSE(document["descriptives"]["histograms"].contains("f3"));
    EXPECT_EQ(part(document, "histograms", "f2")["data"]["values"],
              json::parse(R"([{"same": 5.0, "end": 6.0, "count": 4.0}])"));
}

TEST_F(ResultDocument, ShowsValuesInTheFormatsOfTheirFields)
{
    const json document = describeRows(
        R"(<DataModel>
        <Field name="money" storage="real" measure="continuous"><Label>Money &amp; co</Label>
          <Format type="4" width="10" decimals="1"/></Field>
        <Field name="day" storage="date" measure="continuous"/>
        <Field name="at" storage="timestamp" measure="nominal"/>
        <Field name="clock" storage="time" measure="continuous"/>
        <Field name="small" storage="real" measure="continuous">
          <Format type="5" width="8" decimals="2"/></Field></DataModel>)",
        {{1.5, 0.0, 0.0, 1.0, 0.001},
         {2.25, 1.0, 90061.5, 3600.0, 0.0025},
         {4.0, -1.0, -0.5, 7200.0, 0.004}});
    const TableView table = statistics(document);
    const std::tuple<const char*, const char*, json, const char*> cases[] = {
        {"money", "Maximum", 4, R"({"decimals": 1, "prefix": "$"})"},
        {"money", "Mean", 7.75 / 3, R"({"decimals": 3, "prefix": "$"})"},
        {"money", "Skewness", nullptr, R"({"decimals": 3})"},
        {"day", "Minimum", -86400, R"({"dateTimePattern": "yyyy-MM-dd"})"},
        {"at", "Maximum", 90061.5, R"({"dateTimePattern": "yyyy-MM-dd HH:mm:ss"})"},
        {"small", "Minimum", 0.001, R"({"decimals": 4})"},
        {"clock", "Maximum", 7200, R"({"dateTimePattern": "HH:mm:ss"})"},
        {"day", "N/Valid", 3, R"({"decimals": 0})"}};
    for (const auto& [field, column, value, format] : cases) {
        if (!value.is_null()) {
            EXPECT_EQ(table.cell({field, column}), value) << field << " " << column;
        }
        EXPECT_EQ(table.format({field, column}), json::parse(format)) << field << " " << column;
    }
    EXPECT_EQ(
        part(document, "frequencies",
             "f3")["dimensions"][0]["children"][0]["children"][2]["text"]["text"]["numericText"],
        json::parse(R"({"value": 90061.5,
                              "format": {"dateTimePattern": "yyyy-MM-dd HH:mm:ss"}})"));
    EXPECT_EQ(part(document, "bars", "f3")["data"]["values"][0]["at"], "1969-12-31T23:59:59.5Z");
    EXPECT_EQ(part(document, "histograms", "f2")["data"]["values"][0],
              json::parse(R"({"day": "1969-12-31", "end": "1970-01-01", "count": 1.0})"));
    EXPECT_EQ(part(document, "histograms", "f4")["data"]["values"][0],
              json::parse(R"({"clock": "1970-01-01T00:00:00Z",
                              "end": "1970-01-01T01:00:00Z", "count": 1.0})"));
    EXPECT_EQ(document["dataModel"]["fields"][0],
              json::parse(R"({"id": "money", "measurementLevel": "continuous", "storage": "real",
                  "role": "input", "label": "Money & co", "format": {"numberFormat":
                  {"formatType": 4, "width": 10, "decimalPlaces": 1}}})"));
}

TEST_F(ResultDocument, KeepsMissingValuesInAGroupOfTheirOwn)
{
    const json document =
        describeRows(R"(<DataModel><Field name="x" storage="real" measure="nominal">
        <ValueLabels><Value value="1" label="one"/><Value value="2.5" label="more"/>
        <Value value="-9" label="refused"/></ValueLabels>
        <MissingValues><Value value="-9"/><Value value="-8"/></MissingValues></Field>
        <Field name="t" storage="string" measure="nominal"/></DataModel>)",
                     {{1.0, ""},
                      {2.5, " "},
                      {1.0, "(empty)"},
                      {-9.0, "x"},
                      {-8.0, ""},
                      {std::monostate(), std::monostate()},
                      {INFINITY, "x"},
                      {-9.0, "x"}});
    const TableView numbers(part(document, "frequencies", "f1"));
    EXPECT_EQ(numbers.leaves(0), (std::vector<std::string>{
                                     "Valid/1.0", "Valid/2.5", "Valid/Total", "Missing/-9.0",
                                     "Missing/-8.0", "Missing/System", "Missing/Total", "Total"}));
    const std::tuple<const char*, const char*, json> cases[] = {
        {"Valid/1.0", "Frequency", 2},
        {"Valid/1.0", "Percent", 25},
        {"Valid/1.0", "Valid Percent", 200.0 / 3},
        {"Valid/2.5", "Cumulative Percent", 100},
        {"Valid/Total", "Valid Percent", 100},
        {"Valid/Total", "Cumulative Percent", nullptr},
        {"Missing/-9.0", "Frequency", 2},
        {"Missing/-9.0", "Valid Percent", nullptr},
        {"Missing/System", "Frequency", 2},
        {"Missing/Total", "Frequency", 5},
        {"Missing/Total", "Percent", 62.5},
        {"Total", "Frequency", 8}};
    for (const auto& [row, column, value] : cases)
        EXPECT_EQ(numbers.cell({row, column}), value) << row << " " << column;
    // Whole numbers are integers, and those with a fraction texts: readers take no others.
    EXPECT_EQ(document["dataModel"]["fields"][0]["valueLabels"]["values"],
              json::parse(R"(["1", "2.5", "-9"])"));
    const std::string labels = part(document, "bars", "f1")["encoding"]["y"]["axis"]["labelExpr"];
    EXPECT_EQ(labels, R"(({"1":"one","2.5":"more"})[datum.value] || datum.label)");
    // Each text is told apart, the empty one too.
    EXPECT_EQ(TableView(part(document, "frequencies", "f2")).leaves(0),
              (std::vector<std::string>{"Valid/((empty))", "Valid/ ", "Valid/(empty)", "Valid/x",
                                        "Valid/Total", "Missing/System", "Total"}));
}

TEST_F(ResultDocument, LimitsWhatItTellsOneByOne)
{
    std::string csv = "t,n\n";
    for (int i = 0; i < 100; ++i)
        csv += "v" + std::to_string(100 + i) + "," + std::to_string(i) + "\n";
    csv += "v150,1\nv199,1\n";
    json document = describeCsv(csv);
    // More leaves than one digit of a key has.
    const TableView table(part(document, "frequencies", "f1"));
    EXPECT_EQ(table.cell({"Valid/v199", "Frequency"}), 2);
    EXPECT_EQ(table.format({"Valid/v199", "Frequency"}), json::parse(R"({"decimals": 0})"));
    const json bars = part(document, "bars", "f1");
    EXPECT_EQ(bars["title"]["subtitle"], "The 50 most frequent of 100 values");
    ASSERT_EQ(bars["data"]["values"].size(), 50U);
    EXPECT_EQ(bars["data"]["values"][47]["t"], "v147");
    EXPECT_EQ(bars["data"]["values"][49], json::parse(R"({"t": "v199", "count": 2})"));

    document = describeCsv(csv, R"({"maxNOfDistinctValues": 99, "useFeatureSelection": true})");
    EXPECT_FALSE(document["descriptives"].contains("frequencies"));
    const json notifications = document["descriptives"]["notifications"];
    ASSERT_EQ(notifications.size(), 2U);
    EXPECT_NE(shownText(notifications[0]).find("\"useFeatureSelection\""), std::string::npos);
    EXPECT_EQ(notifications[0]["severity"], "Warning");
    EXPECT_EQ(shownText(notifications[1]).substr(0, 14), "t has too many");
    EXPECT_EQ(notifications[1]["severity"], "Comment");

    document = describeCsv(csv, R"({"computeSummaryStats": false,
                                    "computeDistSummaryForString": false})");
    EXPECT_EQ(statistics(document).leaves(1), (std::vector<std::string>{"N/Valid", "N/Missing"}));
    EXPECT_EQ(document["descriptives"].size(), 2U) << "no frequencies and no histogram";
    EXPECT_TRUE(document["descriptives"]["notifications"].empty());
    document = describeCsv(csv, R"({"inputFieldList": []})");
    EXPECT_EQ(shownText(document["descriptives"]["notifications"][0]),
              "There is no field to describe.");
}

TEST_F(ResultDocument, RefersToFieldsOfAnyName)
{
    // The name as CSV has it, as records have it, and as a chart refers to it and shows it.
    using Case = std::tuple<const char*, const char*, const char*, const char*>;
    const Case cases[] = {
        {"a.b[0]", "a.b[0]", "a\\.b\\[0\\]", "a.b[0]"},
        {"\"it's \"\"it\"\"\"", "it's \"it\"", "it\\'s \\\"it\\\"", "it's \"it\""},
        {"back\\", "f3", "f3", "back\u2216"},
        {"\"two\nlines\"", "f4", "f4", "two lines"},
        {"__proto__", "f5", "f5", "__proto__"},
        {"Count", "Count", "Count", "Count"},
    };
    std::string header;
    std::string numbers;
    std::string texts;
    for (const auto& [quoted, column, reference, title] : cases) {
        header += (header.empty() ? "" : ",") + std::string(quoted);
        numbers += numbers.empty() ? "1" : ",1";
        texts += texts.empty() ? "s" : ",s";
    }
    const json scales = describeCsv(header + "\n" + numbers + "\n");
    const json names = describeCsv(header + "\n" + texts + "\n");
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto& [quoted, column, reference, title] = cases[i];
        const std::string key = "f" + std::to_string(i + 1);
        const json histogram = part(scales, "histograms", key.c_str());
        const json bars = part(names, "bars", key.c_str());
        EXPECT_EQ(histogram["data"]["values"][0].at(column), 1) << histogram;
        EXPECT_EQ(histogram["encoding"]["x"]["field"], reference);
        EXPECT_EQ(histogram["encoding"]["x"]["title"], title);
        EXPECT_EQ(bars["data"]["values"][0].at(column), "s") << bars;
        EXPECT_EQ(bars["encoding"]["y"]["field"], reference);
        EXPECT_EQ(bars["data"]["values"][0].size(), 2U) << "counts have a column of their own";
    }
}

TEST_F(ResultDocument, TellsTheTimeIntervals)
{
    const json document =
        describeCsv("d,year,quarter,c\n2024-01-31,2020,1,0.5\n2024-02-29,2020,3,0.5\n"
                    "2024-06-30,2021,1,0.5\n2024-06-30,2021,1,0.5\n",
                    R"({"inputFieldList": ["d"], "stdDateTimeFieldList": ["d"],
        "nonStdDateTimeFieldList": [["year", "quarter"], ["c"]]})");
    const json table = part(document, "intervals", "table");
    const TableView view(table);
    const auto told = [&](const std::string& row, const std::string& fields) {
        const json cell = view.cell({row, fields});
        return view.format({row, fields}).contains("string")
                   ? shownText(table["cellLabels"]["values"][cell.get<std::size_t>()])
                   : cell.dump();
    };
    const std::vector<std::vector<std::string>> expected = {
        {"Unit of time", "month", "quarter", "null"},
        {"Units from point to point", "1", "2", "null"},
        {"First point", "2024-01-31", "year 2020, quarter 1", "null"},
        {"Last point", "2024-06-30", "year 2021, quarter 1", "null"},
        {"Points/Total", "6", "3", "0"},
        {"Points/Occurring", "3", "3", "0"},
        {"Points/Missing", "3", "0", "0"},
        {"Records/At the point of another", "1", "1", "0"},
        {"Records/Without a point", "0", "0", "4"}};
    for (const auto& row : expected) {
        SCOPED_TRACE(row[0]);
        for (std::size_t column = 1; column < row.size(); ++column)
            EXPECT_EQ(told(row[0], view.leaves(1).at(column - 1)), row[column]);
    }
    EXPECT_EQ(view.leaves(1), (std::vector<std::string>{"d", "year, quarter", "c"}));
    EXPECT_EQ(view.notes({"Unit of time", "c"}), "The values make up no time interval.");
    // The bars of dates are shown with their number.
    const json chart = part(document, "histograms", "f1");
    EXPECT_EQ(chart["mark"]["orient"], "vertical");
    EXPECT_EQ(chart["description"], "Histogram of d: 4 values in " +
                                        std::to_string(chart["data"]["values"].size()) + " bins");
}

TEST_F(ResultDocument, LeavesTheOtherContainersAsTheyWere)
{
    TestRows again("rows", {}, {{1.0, 2.0}, {-9.0, 1.0}, {3.0, -1.0}, {3.0, std::monostate()}});
    again.model = R"(<DataModel><Field name="x" storage="real" measure="nominal">
        <MissingValues><Value value="-9"/></MissingValues></Field>
        <Field name="w" storage="real" measure="continuous"/></DataModel>)";
    const char* const settings = R"({"frequencyWeightField": "w"})";
    TestRows rows = again;
    describeRows(rows, settings);
    const std::string with = member("stat.zip", "StatXML.xml");
    succeeded(
        feed(again, std::string("read({\"dataSource\": \"rows\"}) -> descriptives:descriptives(") +
                        settings + R"(, _, [{"name": "StatXML", "uri": "$DIR/stat.zip"}]))"));
    EXPECT_EQ(member("stat.zip", "StatXML.xml"), with);
    EXPECT_NE(with.find(R"(records="2")"), std::string::npos) << with;
}

TEST_F(ResultDocument, ShowsTheAnalysesThatAreRequested)
{
    std::string csv = "x,g\n";
    for (int i = 1; i <= 10; ++i)
        csv += std::to_string(i) + (i % 2 ? ",a\n" : ",b\n");
    const json document = describeCsv(csv + "100,a\n", R"({"computeCustomPercentiles": [5, 95],
        "identifyExtremeOutliers": true, "computeBivStatsForBDP": true})");
    const auto table = [&](const char* key) { return TableView(part(document, key, "table")); };
    EXPECT_EQ(table("percentiles").cell({"x", "Percentiles/95"}), 55);
    EXPECT_EQ(table("outliers").cell({"x", "Bounds/Upper"}), 16);
    EXPECT_EQ(table("outliers").cell({"x", "Extremes/Above"}), 1);
    EXPECT_EQ(table("pairs").cell({"x/g", "N"}), 11);
    EXPECT_EQ(table("pairs").cell({"x/g", "Test/df 2"}), 9);
    // The whiskers end at the last values within the bounds.
    const json box = part(document, "boxes", "f1");
    EXPECT_EQ(box["data"]["values"][0]["greatest"], 10);
    EXPECT_EQ(box["layer"].back()["data"]["values"][0]["kind"], "extreme");
    EXPECT_EQ(part(document, "pairs", "chart")["data"]["values"].size(), 2U);
}

TEST(BinEdges, AreRoundAndHoldAllValues)
{
    using EmbeddedHV::BinScale;
    const double day = 86400;
    using Case = std::tuple<EmbeddedHV::BinRequest, double, double, std::size_t>;
    const Case cases[] = {
        // 2 * 10 / 1000^(1/3) = 2, as wide as that.
        {{0, 30, 10, 1000, BinScale::Real}, 0, 2, 16},
        {{0.5, 29, 10, 1000, BinScale::Real}, 0, 2, 15},
        {{0.1, 0.3, std::nullopt, 4, BinScale::Real}, 0.1, 0.1, 3}, // ends are what people write
        {{0, 1e6, 1, 1e6, BinScale::Real}, 0, 50000, 21},           // far values do not make many
        {{1, 5, 2, 100, BinScale::Whole}, 1, 1, 5},
        {{-7, -7, 0, 3, BinScale::Real}, -7, 1, 1},
        {{-1 * day, 1 * day, day, 3, BinScale::Days}, -1 * day, day, 3},
        {{0, 366 * day, 180 * day, 366, BinScale::Days}, 0, 59 * day, 7}, // every second month
        {{0, 8 * day, 8 * day, 3, BinScale::Days}, -3 * day, 7 * day, 2}, // Mondays
        {{30000, 40000, 5000, 64, BinScale::Seconds}, 28800, 1800, 7},    // as many as Sturges asks
        {{1e15, 1e15 + 1, 1, 10, BinScale::Real}, 1e15, 1, 2},            // doubles lie apart there
        {{-1e300, 1e300, 1e299, 2, BinScale::Real}, -1e300, 2e299, 11},
    };
    for (const auto& [request, first, width, bins] : cases) {
        const std::vector<double> edges = EmbeddedHV::binEdges(request);
        SCOPED_TRACE(request.minimum);
        SCOPED_TRACE(request.maximum);
        EXPECT_EQ(edges.front(), first);
        EXPECT_DOUBLE_EQ(edges[1] - edges[0], width);
        EXPECT_EQ(edges.size() - 1, bins);
        EXPECT_LE(edges.front(), request.minimum);
        EXPECT_GT(edges.back(), request.maximum);
        EXPECT_TRUE(std::is_sorted(edges.begin(), edges.end(), std::less_equal<>()));
    }
    // Whatever the numbers, there are no more bins than that.
    std::mt19937 random(1);
    for (int i = 0; i < 2000; ++i) {
        const double low = std::ldexp(static_cast<double>(random()) - 2e9, int(random() % 80) - 40);
        const double range = std::ldexp(static_cast<double>(random()), int(random() % 80) - 40);
        const auto scale = static_cast<BinScale>(random() % 4);
        const auto edges = EmbeddedHV::binEdges({low, low + range, range / 1000, 1e9, scale});
        EXPECT_LE(edges.size() - 1, EmbeddedHV::kMostBins) << low << " " << range;
        EXPECT_LE(edges.front(), low);
        EXPECT_GT(edges.back(), low + range);
    }
}

} // namespace
} // namespace EngineTest
