#include <cstdlib>

#include "support/HostScopes.h"
#include "tcm/WorkingModel.h"

// Models that the working engine trains, through the library: the values that a viewer gets agree
// with the data and with the equations in the model.

namespace {

using testing::HasSubstr;
using Names = std::vector<std::string>;

constexpr int kTrained = 72;

struct DataCase
{
    const char* name;
    TimeKind time;
    Names dimensions;
};

class EachData : public WorkingModel, public testing::WithParamInterface<DataCase>
{
protected:
    void expectScores(const MonthlyData& data);
    void expectDiagrams(const MonthlyData& data);

    LocallyUniqueID dataset = kNoDataset;
    Names group; ///< dimension values of the series
};

/// All values of GetScenarioInfo and getForecast, with three predictions beyond the data.
void EachData::expectScores(const MonthlyData& data)
{
    const int more = data.months() - kTrained;
    const EquationsByHand byHand(Json::parse(entry("TCMModel.json")), data);
    Names series = group;
    series.emplace_back("sales");
    std::vector<double> actual;
    std::vector<double> predicted;
    ASSERT_TRUE(viewer->GetScenarioInfo(dataset, path, data.timeField(), "-69",
                                        std::to_string(more + 3), {}, {}, {}, "sales",
                                        data.dimensions(), group, actual, predicted))
        << reason();
    ASSERT_EQ(actual.size(), 70U + static_cast<std::size_t>(more));
    for (std::size_t at = 0; at < actual.size(); ++at)
        EXPECT_EQ(actual[at], MonthlyData::sales(static_cast<int>(at) + 2, data.groups() - 1));
    ASSERT_EQ(predicted.size(), 3U);
    HVSeriesForecast forecast;
    ASSERT_TRUE(viewer->getForecast(dataset, path, "sales", data.dimensions(), group, {3, 0.9, {}},
                                    forecast))
        << reason();
    EXPECT_EQ(forecast.timeFields.size(), data.timeField().empty() && !data.isCounted() ? 2U : 1U);
    ASSERT_EQ(forecast.points.size(), static_cast<std::size_t>(data.months() + 3));
    for (int month = 0; month < data.months() + 3; ++month) {
        const HVSeriesPoint& point = forecast.points[static_cast<std::size_t>(month)];
        EXPECT_EQ(point.isFuture, month >= data.months());
        if (month < 2) {
            EXPECT_EQ(point.predicted, kSystemMissing) << "there are no lags yet";
            continue;
        }
        EXPECT_NEAR(point.predicted, byHand.predicted(series, month), 1e-6) << month;
        EXPECT_TRUE(point.lower < point.predicted && point.predicted < point.upper);
        if (point.isFuture) {
            EXPECT_EQ(point.actual, kSystemMissing);
            EXPECT_EQ(point.predicted, predicted[static_cast<std::size_t>(month - data.months())]);
        }
    }
}

/// Of the model alone and with the data, which contribute to the latest change.
void EachData::expectDiagrams(const MonthlyData& data)
{
    for (const LocallyUniqueID on : {kNoDataset, dataset}) {
        std::string diagram;
        ASSERT_TRUE(viewer->getImpactDiagram(on, path, "sales", data.dimensions(), group, false, 1,
                                             diagram))
            << reason();
        const Json artifacts = Json::parse(diagram).at("artifacts");
        ASSERT_EQ(artifacts.size(), 2U);
        EXPECT_EQ(artifacts[0].at("name"), "interpretation.ImpactDiagramEffects");
        EXPECT_EQ(artifacts[1].at("name"), "interpretation.ImpactDiagramCauses");
        const Json& strongest = artifacts[1].at("edges").at(0);
        EXPECT_EQ(strongest.at("lag"), 2) << "advertising leads sales by two months";
        EXPECT_NEAR(strongest.at("sum").get<double>(), 2, 0.2);
        EXPECT_EQ(strongest.contains("contribution"), on == dataset);
    }
}

} // namespace

TEST_P(EachData, IsTrainedReplayedAndExplained)
{
    const auto& [name, time, dimensions] = GetParam();
    const MonthlyData trained(time, dimensions, kTrained);
    ASSERT_NO_FATAL_FAILURE(train(trained));
    group = trained.valuesOf(trained.groups() - 1);

    std::string all;
    std::string input;
    std::string output;
    std::string properties;
    std::string network;
    std::string preparation;
    ASSERT_TRUE(
        viewer->getModelCapabilities(path, all, input, output, properties, network, preparation))
        << reason();
    EXPECT_EQ(network, entry("TCMGraph.json"));
    EXPECT_EQ(preparation, entry("TSDPOutput.json"));
    EXPECT_NE(CFMetaData(all).GetField("metricField"), nullptr);
    for (const VEXA_Variable& variable : trained.variables())
        EXPECT_NE(CFMetaData(input).GetField(variable.GetName()), nullptr) << variable.GetName();
    EXPECT_NE(CFMetaData(output).GetField("sales_predicted"), nullptr);
    EXPECT_THAT(properties, HasSubstr(R"(name="trainingPoints" value="72")"));

    for (const int more : {0, 6}) {
        SCOPED_TRACE(more);
        const MonthlyData data(time, dimensions, kTrained + more);
        dataset = SvrDMDataset::Register(data.source());
        ASSERT_NO_FATAL_FAILURE(expectScores(data));
        ASSERT_NO_FATAL_FAILURE(expectDiagrams(data));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Models, EachData,
    testing::Values(
        DataCase{"Date", TimeKind::Date, {}}, DataCase{"Text", TimeKind::Text, {}},
        DataCase{"Cyclic", TimeKind::Cyclic, {}}, DataCase{"CaseCount", TimeKind::CaseCount, {}},
        DataCase{"OneDimension", TimeKind::Date, {"region"}},
        DataCase{"TextsAndTwoDimensions", TimeKind::Text, {"country", "region"}},
        DataCase{"CyclicAndThreeDimensions", TimeKind::Cyclic, {"country", "region", "shop"}},
        DataCase{"CaseCountAndOneDimension", TimeKind::CaseCount, {"region"}}),
    [](const auto& tested) { return tested.param.name; });

TEST_F(WorkingModel, PredictsASeriesThatIsNoTargetFromItsOwnPast)
{
    const MonthlyData data(TimeKind::Date, {}, kTrained);
    ASSERT_NO_FATAL_FAILURE(train(data, [](auto& training) { training.AddTarget({"sales"}); }));
    const EquationsByHand byHand(Json::parse(entry("TCMModel.json")), data);
    std::vector<double> actual;
    std::vector<double> predicted;
    ASSERT_TRUE(viewer->GetScenarioInfo(SvrDMDataset::Register(data.source()), path, "month", "0",
                                        "2", {}, {}, {}, "advertising", {}, {}, actual, predicted))
        << reason();
    EXPECT_EQ(actual, std::vector<double>{MonthlyData::advertising(kTrained - 1, 0)});
    ASSERT_EQ(predicted.size(), 2U);
    for (int month = kTrained; month < kTrained + 2; ++month)
        EXPECT_NEAR(predicted[static_cast<std::size_t>(month - kTrained)],
                    byHand.predicted({"advertising"}, month), 1e-6);
}

TEST_F(WorkingModel, ReportsMissingValuesAsMissing)
{
    MonthlyData data(TimeKind::Date, {}, kTrained);
    ASSERT_NO_FATAL_FAILURE(train(data));
    data.endSales(kTrained - 2);
    std::vector<double> actual;
    std::vector<double> predicted;
    ASSERT_TRUE(viewer->GetScenarioInfo(SvrDMDataset::Register(data.source()), path, "month", "-2",
                                        "2", {}, {}, {}, "sales", {}, {}, actual, predicted))
        << reason();
    EXPECT_THAT(actual, testing::ElementsAre(MonthlyData::sales(kTrained - 3, 0), kSystemMissing,
                                             kSystemMissing));
    EXPECT_EQ(predicted.size(), 2U);
}

TEST_F(WorkingModel, IsTheSameForAnyOrderOfTheRecords)
{
    MonthlyData data(TimeKind::Date, {"region"}, kTrained);
    ASSERT_NO_FATAL_FAILURE(train(data));
    std::map<std::string, std::string> first;
    for (const char* name : {"TCMModel.json", "TCMGraph.json", "TSDPOutput.json", "StatXML.xml"})
        first[name] = entry(name);
    data.reverseRecords();
    ASSERT_NO_FATAL_FAILURE(train(data));
    for (const auto& [name, text] : first)
        EXPECT_EQ(entry(name), text) << name;
}

TEST_F(WorkingModel, RejectsDataAndSeriesThatItDoesNotKnow)
{
    ASSERT_NO_FATAL_FAILURE(train({TimeKind::Text, {"region"}, kTrained}));
    MonthlyData data(TimeKind::Text, {"region"}, kTrained);
    const LocallyUniqueID own = SvrDMDataset::Register(data.source());
    data.addStranger("2020-02-30");
    const LocallyUniqueID noTime = SvrDMDataset::Register(data.source());
    const LocallyUniqueID other =
        SvrDMDataset::Register(MonthlyData(TimeKind::Text, {}, kTrained).source());
    struct
    {
        LocallyUniqueID dataset;
        const char* region;
        double level;
        const char* reason;
    } const cases[] = {
        {other, "s", 0.9, "no reason"},
        {own, "x", 0.9, "no reason"},
        {own, "s", 1.5, "confidenceLevel"},
        {noTime, "s", 0.9, "2020-02-30"},
    };
    HVSeriesForecast forecast;
    for (const auto& [dataset, region, level, expected] : cases) {
        EXPECT_FALSE(viewer->getForecast(dataset, path, "sales", {"region"}, {region},
                                         {1, level, {}}, forecast));
        EXPECT_THAT(reason(), HasSubstr(expected));
    }
    std::vector<double> values;
    EXPECT_FALSE(viewer->GetScenarioInfo(own, path, "month", "0", "0", {}, {}, {}, "", {"region"},
                                         {"s"}, values, values));
    EXPECT_EQ(reason(), "no reason");
    std::string diagram;
    EXPECT_FALSE(
        viewer->getImpactDiagram(own, path, "sales", {"region"}, {"s"}, false, 0, diagram));
    EXPECT_THAT(reason(), HasSubstr("level"));
}

TEST_F(WorkingModel, DescribesTheDataToTrainOn)
{
    const std::string weather = std::string(std::getenv("HV_TEST_DATA")) + "/weather.csv";
    const auto months = [](int count, const Names& dimensions) {
        return SvrDMDataset::Register(MonthlyData(TimeKind::Date, dimensions, count).source());
    };
    struct
    {
        LocallyUniqueID dataset;
        std::string file;
        const char* date;
        Names fields;
        int maxValues;
        std::vector<std::size_t> values; ///< how many each field lists: none if there are too many
        const char* reason = nullptr;    ///< of a failure
    } const cases[] = {
        {months(9, {"gr\xF6\xDF"}), "", "month", {"gr\xF6\xDF", "sales"}, INT_MAX, {2, 18}},
        {months(105, {}), "", "month", {"sales"}, 99, {105}},
        {months(106, {}), "", "", {"sales"}, 99, {0}},
        {months(101, {}), "", "", {"sales"}, 100, {101}},
        {months(102, {}), "", "", {"sales"}, 100, {0}},
        {months(3, {}), "", "month", {}, 100, {}},
        {months(3, {}), "", "", {}, 100, {}, "no reason"},
        {months(3, {}), "", "", {"no such field"}, 100, {}, "no such field"},
        {kNoDataset, weather, "date", {"weather"}, 100, {5}},
        {kNoDataset, "", "", {"weather"}, 100, {}, "Cannot read the selected file."},
        {kNoDataset, "missing.sav", "", {"weather"}, 100, {}, "missing.sav"},
    };
    const ScopedCodePage latin("ISO-8859-1");
    viewer.emplace();
    for (const auto& [dataset, file, date, fields, maxValues, values, expected] : cases) {
        SCOPED_TRACE(testing::PrintToString(fields) + file + std::to_string(maxValues));
        std::string interval = "before";
        std::string model = "before";
        const bool isDone =
            viewer->getGatingInfo(dataset, file, date, fields, maxValues, interval, model);
        ASSERT_EQ(isDone, expected == nullptr);
        if (!isDone) {
            EXPECT_THAT(reason(), HasSubstr(expected));
            continue;
        }
        EXPECT_EQ(interval.empty(), date[0] == '\0');
        EXPECT_THAT(interval, HasSubstr(interval.empty() ? "" : file.empty() ? "month" : "day"));
        const CFMetaData found = model.empty() ? CFMetaData() : CFMetaData(model);
        ASSERT_EQ(found.FieldCount(), values.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            EXPECT_EQ(found.GetField(i)->GetValues().size(), values[i]);
        EXPECT_EQ(found.GetField("größ") != nullptr, values.size() == 2);
    }
}
