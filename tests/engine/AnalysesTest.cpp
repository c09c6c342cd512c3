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

TEST_F(Analyses, CountWhatIsMissingTogether)
{
    const std::string csv = "a,b,c,w\n1,x,,2\n,,3,3\n1,y,,4\n,,5,1\n2,z,6,1\n,,,\n";
    const Expected plain = {{"number(//MissingPatterns/@count)", 4},
                            {"number(//Pattern[1]/@records)", 2}, // equal counts: by pattern
                            {"count(//Pattern[1]/Field)", 1},
                            {"count(//Pattern[1]/Field[@name='c'])", 1},
                            {"number(//Pattern[2]/@records)", 2},
                            {"count(//Pattern[2]/Field)", 2},
                            {"number(//Pattern[3]/@records)", 1},
                            {"count(//Pattern[3]/Field)", 0},
                            {"count(//Pattern[4]/Field)", 3},
                            {"count(//Pattern/@weight)", 0}};
    expect(csv, R"({"inputFieldList": ["a", "b", "c"], "computeMissingPatterns": true})", plain);
    expect(csv, R"({"computeMissingPatterns": true, "frequencyWeightField": "w"})",
           {{"number(//MissingPatterns/@count)", 3},
            {"number(//Pattern[1]/@weight)", 6},
            {"number(//Pattern[2]/@weight)", 4}});
    expect("a\n1\n", R"({"computeMissingPatterns": true})",
           {{"count(//Pattern)", 1}, {"number(//Pattern/@records)", 1}});
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

TEST_F(Analyses, ComparePairs)
{
    const auto expectPair = [this](const char* csv, const std::string& settings,
                                   const Expected& numbers) {
        Expected expected = {{"count(//Pair)", 1}};
        for (const auto& [name, value] : numbers)
            expected.emplace_back("number(//Pair/@" + name + ")", value);
        expect(csv, settings, expected);
    };
    // Squares 5 and 5, products 3. With 2 degrees of freedom, p = 1 - t / sqrt(2 + t^2).
    expectPair("x,y\n1001,2.5\n1002,1.5\n1003,4.5\n1004,3.5\n9999,\n,9\n",
               R"({"computeBivStatsForBDP": true})",
               {{"records", 4},
                {"strength", 0.6},
                {"statistic", 0.6 * std::sqrt(2 / 0.64)},
                {"df1", 2},
                {"p", 0.4}});
    // SSB 24, SSW 4. With 4 degrees of freedom, p = 1 - sin a (1 + cos^2 a / 2), cos^2 a = 1 / 7.
    // The mean of all values is far from those of the pair.
    expectPair("g,v\na,1000000001\na,1000000002\na,1000000003\nb,1000000005\nb,1000000006\n"
               "b,1000000007\n,9\nc,\n",
               R"({"computeAllTargetInputPairs": true, "targetField": "v"})",
               {{"records", 6},
                {"strength", std::sqrt(24.0 / 28)},
                {"statistic", 24},
                {"df1", 1},
                {"df2", 4},
                {"p", 1 - std::sqrt(6.0 / 7) * (1 + 1.0 / 14)}});
    // Each cell differs from 15 by 5: chi squared 4 * 25 / 15.
    expectPair("a,b,w\nx,u,10\nx,v,20\ny,u,20\ny,v,10\n",
               R"({"computeBivStatsForBDP": true, "frequencyWeightField": "w"})",
               {{"records", 4},
                {"weight", 60},
                {"strength", 1.0 / 3},
                {"statistic", 20.0 / 3},
                {"df1", 1},
                {"p", std::erfc(std::sqrt(10.0 / 3))}});
    // Each cell with records has 2 of 2 / 3, and each of the empty ones 0 of 2 / 3.
    expectPair("a,b\nx,u\ny,v\nz,w\nx,u\ny,v\nz,w\n", R"({"computeBivStatsForBDP": true})",
               {{"strength", 1}, {"statistic", 12}, {"df1", 4}, {"p", 7 * std::exp(-6.0)}});
    // A perfect correlation has no finite t. A constant has no correlation.
    expect("x,y,c\n1,10,7\n2,20,7\n3,30,7\n", R"({"computeBivStatsForBDP": true})",
           {{"count(//Pair)", 3},
            {"number(//Pair[@first='x'][@second='y']/@strength)", 1},
            {"number(//Pair[@first='x'][@second='y']/@p)", 0},
            {"count(//Pair/@statistic)", 0},
            {"count(//Pair[@second='c']/@strength)", 0}});
}

TEST_F(Analyses, FindThePropertiesOfFields)
{
    std::string texts;
    for (const char* name : {"number", "real", "day"})
        texts += std::string(texts.empty() ? "" : ", ") + R"({"name": ")" + name +
                 R"(", "storage": "string", "measure": "nominal"})";
    std::string csv = "id,k,n,number,real,day,same\n";
    for (int i = 11; i <= 22; ++i) {
        const std::string n = std::to_string(i);
        // Not all of these integers are doubles.
        for (const std::string& part :
             {"a" + n, std::to_string(i % 2), "90071992547410" + n, n, n + ".5", "2024-02-" + n})
            csv += part + ",";
        csv += "s\n";
    }
    // The last record has no number, real and day.
    expect(csv + "b,1,9007199254741023,,,,s\n",
           R"({"storageTypeHandling": "detect", "measureHandling": "detect",
        "fieldRoleHandling": "detect", "targetField": "real"})",
           {{"count(../Field[@name='id'][@measure='typeless'][@role='recordId'])", 1},
            {"count(../Field[@name='k'][@measure='flag'][@role='input'])", 1},
            {"count(../Field[@name='n'][@measure='continuous'][@role='recordId'])", 1},
            {"count(../Field[@name='number'][@storage='integer'][@role='input'])", 1},
            {"count(../Field[@name='real'][@storage='real'][@role='target'])", 1},
            {"count(../Field[@name='day'][@storage='date'][@measure='continuous'])", 1},
            {"count(../Field[@name='same'][@storage='string'][@role='none'])", 1},
            {"number(//FieldSummary[@name='real']/Statistics/@mean)", 17}},
           " -> updateDataModel({\"fields\": [" + texts + "]})");
}

TEST_F(Analyses, MergeCategoriesThatDoNotDiffer)
{
    // a and c have the same shares of yes; b, with 1 of 40, differs from both.
    const char* const csv = "g,t,w\na,yes,20\na,no,20\nb,yes,1\nb,no,39\nc,yes,10\nc,no,10\n";
    const std::string settings = R"({"useSupervisedMerging": true, "targetField": "t",
        "frequencyWeightField": "w"})";
    expect(csv, settings,
           {{"count(//MergedValues)", 1},
            {"count(//Group)", 2},
            {"count(//Group[Value[1]/@value='a'][Value[2]/@value='c'])", 1}});
    // Only neighbours are merged if the categories have an order.
    expect(csv, settings, {{"count(//Group)", 3}},
           R"( -> updateDataModel({"fields": [{"name": "g", "measure": "ordinal"}]}))");
}

TEST_F(Analyses, CountInBinsZerosAndDurations)
{
    // The deciles of 1 to 11 are 1, 2, ... 11.
    expect(farValue(), R"({"useEqualFreqBinning": true})",
           {{"count(//Bin)", 10},
            {"number(//Bin[10]/@from)", 10},
            {"number(//Bin[10]/@to)", 100},
            {"number(//Bin[10]/@count)", 2},
            {"sum(//Bin/@count)", 11}});
    expect("x,w\n0.5,1\n1.5,2\n1.75,4\n,8\n", R"({"computeDistSummaryForNumeric": "bins",
        "frequencyWeightField": "w"})",
           {{"sum(//Bin/@weight)", 7}, {"sum(//Bin/@count)", 3}});
    // Mean 1: p = 1 / e, so the score is (3 e - 6)^2 / (6 (e - 1) - 6).
    const double e = std::exp(1.0);
    const double score = (3 * e - 6) * (3 * e - 6) / (6 * (e - 1) - 6);
    expect("x\n0\n0\n0\n1\n2\n3\n", R"({"zeroInflationDetection": true})",
           {{"number(//ZeroInflation/@zeros)", 3},
            {"number(//ZeroInflation/@expected)", 6 / e},
            {"number(//ZeroInflation/@statistic)", score},
            {"number(//ZeroInflation/@p)", std::erfc(std::sqrt(score / 2))}});
    // 0, 1, 2 and 9 days, 0 and 30 seconds.
    expect("d,t\n2024-02-28,08:00:30\n2024-02-29,08:00:00\n2024-03-01,\n2024-03-08,\n,\n",
           R"({"computeDateDuration": true, "computeTimeDuration": true})",
           {{"number(//Duration[@unit='day']/@longest)", 9},
            {"number(//Duration[@unit='day']/@mean)", 3},
            {"number(//Duration[@unit='day']/@standardDeviation)", std::sqrt(50.0 / 3)},
            {"number(//Duration[@unit='day']/@median)", 1.5},
            {"number(//Duration[@unit='second']/@longest)", 30}});
}

} // namespace
} // namespace EngineTest
