#include <gtest/gtest.h>

#include <cmath>

#include <pugixml.hpp>

#include "engine/EngineFixture.h"

// The analyses of the component descriptives, against values worked out by hand.

namespace EngineTest {
namespace {

/// Paths of attributes in the summaries, and their numbers.
using Expected = std::vector<std::pair<std::string, double>>;

class Analyses : public EngineFixture
{
protected:
    /// `steps` come between the file and the component.
    void expect(const std::string& csv, const std::string& settings, const Expected& expected,
                const std::string& steps = {})
    {
        SCOPED_TRACE(settings);
        write("in.csv", csv);
        succeeded(run("val conf = " + settings +
                      R"(
            val out = [{"name": "StatXML", "uri": "$DIR/stat.zip"}]
            )" + readCsv("in.csv") +
                      steps + " -> descriptives:descriptives(conf, _, out)"));
        pugi::xml_document document;
        document.load_string(member("stat.zip", "StatXML.xml").c_str());
        const pugi::xml_node summaries =
            document.child("StatXML").child("DataModel").child("DatasetSummaries");
        for (const auto& [path, value] : expected) {
            const pugi::xpath_query query(path.c_str());
            // The path of an attribute that is absent gives not-a-number.
            EXPECT_NEAR(query.evaluate_number(summaries), value, 1e-12 * std::max(1.0, value))
                << path;
        }
    }

    static std::string percentile(const char* percent)
    {
        return std::string("number(//Percentile[@percent='") + percent + "']/@value)";
    }
};

/// 1 to 10 and 100.
std::string farValue(const char* more = "")
{
    std::string csv = "x" + std::string(more[0] ? ",w" : "") + "\n";
    for (int i = 1; i <= 10; ++i)
        csv += std::to_string(i) + more + "\n";
    return csv + "100" + more + "\n";
}

TEST_F(Analyses, GivePercentiles)
{
    // At position (W - 1) p: 0.5, 5, 9.5 and 9.9 of 11 values.
    const Expected plain = {{percentile("5"), 1.5},
                            {percentile("50"), 6},
                            {percentile("95"), 55},
                            {percentile("99"), 91},
                            {"count(//Percentile)", 4}};
    expect(farValue(), R"({"computeCustomPercentiles": [99, 5, 95.0, 50, 5]})", plain);
    expect(farValue(), R"({"computeCustomPercentiles": "5, 50,95,99",
        "customPercentilesAccuracy": "exact"})",
           plain);
    // Each value three times: at position 1.6 of 33, 16, 30.4 and 31.68.
    expect(farValue(",3"), R"({"computeCustomPercentiles": [5, 50, 95, 99],
        "frequencyWeightField": "w"})",
           {{percentile("5"), 1}, {percentile("50"), 6}, {percentile("95"), 100}});
    expect(farValue(), R"({"computeAllPercentiles": true, "computeCustomPercentiles": [2.5]})",
           {{"count(//Percentile)", 100}, {percentile("2.5"), 1.25}, {percentile("90"), 10}});
    expect("x,t\n,a\n", R"({"computeCustomPercentiles": true})", {{"count(//Percentile)", 0}});
}

TEST_F(Analyses, FindAndTreatOutliers)
{
    // Quartiles 3.5 and 8.5.
    const Expected fences = {{"number(//Outliers/@lowerBound)", -4},
                             {"number(//Outliers/@upperBound)", 16},
                             {"number(//Outliers/@upperExtremeBound)", 23.5},
                             {"number(//Outliers/@below)", 0},
                             {"number(//Outliers/@above)", 1},
                             {"number(//Outliers/@extremesAbove)", 1},
                             {"number(//Outliers/Value[@extreme]/@value)", 100}};
    const auto with = [&](Expected more) {
        more.insert(more.end(), fences.begin(), fences.end());
        return more;
    };
    expect(farValue(), R"({"identifyExtremeOutliers": true})",
           with({{"number(//Statistics/@maximum)", 100}}));
    expect(farValue(), R"({"outlierDetectionMethod": "interquartileRange",
        "outlierHandlingMethod": "trim"})",
           with({{"number(//Statistics/@mean)", 5.5},
                 {"number(//Statistics/@maximum)", 10},
                 {"number(//FieldSummary/@missing)", 1},
                 {"number(//FieldSummary/@distinct)", 10}}));
    expect(farValue(), R"({"identifyExtremeOutliers": true, "outlierHandlingMethod": "winsorize"})",
           with({{"number(//Statistics/@mean)", 71.0 / 11},
                 {"number(//Statistics/@maximum)", 16},
                 {"number(//FieldSummary/@missing)", 0}}));
    // The deviations from 6 have the median 3.
    expect(farValue(), R"({"outlierDetectionMethod": "medianDeviation"})",
           {{"number(//Outliers/@upperBound)", 6 + 3.5 * 3 / 0.6745},
            {"number(//Outliers/@lowerExtremeBound)", 6 - 7 * 3 / 0.6745}});
    // Ten times 0, ten times 2, and 100: mean 40 / 7, squares 10040 - 14400 / 21.
    expect(
        "x,w\n0,10\n2,10\n100,1\n", R"({"outlierDetectionMethod": "standardDeviation",
        "frequencyWeightField": "w"})",
        {{"number(//Outliers/@upperBound)", 40.0 / 7 + 3 * std::sqrt((10040 - 14400.0 / 21) / 20)},
         {"number(//Outliers/@above)", 1},
         {"number(//Outliers/@weightAbove)", 1}});
    expect("x\n5\n5\n5\n9\n", R"({"outlierDetectionMethod": "medianDeviation"})",
           {{"count(//Outliers)", 0}});
}

TEST_F(Analyses, DescribeManyFieldsInParts)
{
    constexpr int kFields = 101;
    std::string csv;
    for (int row = -1; row < 11; ++row)
        for (int field = 0; field < kFields; ++field)
            csv += (row < 0     ? "x" + std::to_string(field)
                    : row == 10 ? "1000"
                                : std::to_string(row + field)) +
                   (field + 1 < kFields ? "," : "\n");
    // After trimming, the last field has 100 to 109.
    expect(csv, R"({"computeCustomPercentiles": [50], "identifyExtremeOutliers": true,
        "outlierHandlingMethod": "trim"})",
           {{"count(//Outliers[@above='1'])", kFields},
            {"count(//FieldSummary[@missing='1'])", kFields},
            {"number(//FieldSummary[@name='x100']//Percentile/@value)", 104.5}});
}

} // namespace
} // namespace EngineTest
