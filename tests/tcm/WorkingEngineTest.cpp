#include "tcm/WorkingModel.h"

// Models that the working engine trains, through the library: what a viewer gets of them is what
// the data and the equations say.

namespace {

using testing::HasSubstr;
using Json = nlohmann::json;

constexpr int kTrained = 72;

/// The value that the equation of a series gives for one month, from the coefficients in the model.
double byHand(const Json& model, const std::string& id, int month,
              const std::map<std::string, std::function<double(int)>>& values)
{
    for (const Json& equation : model.at("equations")) {
        if (equation.at("series") != id)
            continue;
        double sum = equation.at("intercept").get<double>();
        for (const Json& term : equation.at("terms"))
            sum += term.at("coefficient").get<double>() *
                   values.at(term.at("series"))(month - term.at("lag").get<int>());
        return sum;
    }
    ADD_FAILURE() << "no equation of " << id;
    return 0;
}

/// The actual values of each series of the data, by id.
std::map<std::string, std::function<double(int)>> valuesById(const MonthlyData& data,
                                                             const Json& model)
{
    std::map<std::string, std::function<double(int)>> values;
    for (const Json& series : model.at("series"))
        for (int group = 0; group < data.groups(); ++group)
            for (const char* metric : {"sales", "advertising"}) {
                std::vector<std::string> name = data.valuesOf(group);
                name.emplace_back(metric);
                if (series.at("name").get<std::vector<std::string>>() == name)
                    values[series.at("id")] = [group, isSales = std::string(metric) ==
                                                                "sales"](int month) {
                        return isSales ? MonthlyData::sales(month, group)
                                       : MonthlyData::advertising(month, group);
                    };
            }
    return values;
}

std::string idOf(const Json& model, const std::vector<std::string>& values)
{
    std::vector<std::string> name = values;
    name.emplace_back("sales");
    for (const Json& series : model.at("series"))
        if (series.at("name").get<std::vector<std::string>>() == name)
            return series.at("id");
    return "";
}

struct DataCase
{
    const char* name;
    TimeKind time;
    std::vector<std::string> dimensions;
};

class EachData : public WorkingModel, public testing::WithParamInterface<DataCase>
{
};

} // namespace

TEST_P(EachData, IsTrainedReplayedAndExplained)
{
    const auto& [name, time, dimensions] = GetParam();
    const MonthlyData data(time, dimensions, kTrained);
    ASSERT_NO_FATAL_FAILURE(train(data));
    const Json model = Json::parse(entry("TCMModel.json"));
    const std::vector<std::string> group = data.valuesOf(data.groups() - 1);

    // As long as the training data, and half a year longer.
    for (const int more : {0, 6}) {
        SCOPED_TRACE(more);
        const MonthlyData longer(time, dimensions, kTrained + more);
        const LocallyUniqueID dataset = SvrDMDataset::Register(longer.source());
        std::vector<double> actual;
        std::vector<double> predicted;
        ASSERT_TRUE(viewer->GetScenarioInfo(dataset, path, data.timeField(), "-69",
                                            std::to_string(more + 3), {}, {}, {}, "sales",
                                            dimensions, group, actual, predicted))
            << reason();
        ASSERT_EQ(actual.size(), 70U + static_cast<std::size_t>(more));
        for (std::size_t at = 0; at < actual.size(); ++at)
            EXPECT_EQ(actual[at], MonthlyData::sales(static_cast<int>(at) + 2, data.groups() - 1));
        ASSERT_EQ(predicted.size(), 3U);
        EXPECT_NEAR(predicted[0],
                    byHand(model, idOf(model, group), kTrained + more, valuesById(longer, model)),
                    1e-8 * std::abs(predicted[0]));

        HVSeriesForecast forecast;
        ASSERT_TRUE(
            viewer->getForecast(dataset, path, "sales", dimensions, group, {3, 0.9, {}}, forecast))
            << reason();
        ASSERT_EQ(forecast.points.size(), static_cast<std::size_t>(kTrained + more + 3));
        EXPECT_EQ(forecast.timeFields.size(), time == TimeKind::Cyclic ? 2U : 1U);
        EXPECT_EQ(forecast.points[0].predicted, kSystemMissing) << "there are no lags yet";
        EXPECT_NEAR(forecast.points[40].predicted,
                    byHand(model, idOf(model, group), 40, valuesById(longer, model)), 1e-6);
        const HVSeriesPoint& last = forecast.points.back();
        EXPECT_TRUE(last.isFuture);
        EXPECT_EQ(last.actual, kSystemMissing);
        EXPECT_EQ(last.predicted, predicted[2]);
        EXPECT_LT(last.lower, last.predicted);
        EXPECT_GT(last.upper, last.predicted);

        for (const LocallyUniqueID on : {kNoDataset, dataset}) {
            std::string diagram;
            ASSERT_TRUE(
                viewer->getImpactDiagram(on, path, "sales", dimensions, group, false, 2, diagram))
                << reason();
            const Json artifacts = Json::parse(diagram).at("artifacts");
            ASSERT_EQ(artifacts.size(), 2U);
            EXPECT_EQ(artifacts[1].at("name"), "interpretation.ImpactDiagramCauses");
            EXPECT_GE(artifacts[1].at("edges").size(), 1U) << "advertising drives sales";
            EXPECT_EQ(artifacts[1].at("edges")[0].contains("contribution"), on == dataset);
        }
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

TEST_F(WorkingModel, TellsWhatItCanDo)
{
    ASSERT_NO_FATAL_FAILURE(train({TimeKind::Date, {"region"}, kTrained}));
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
    for (const char* field : {"month", "region", "sales"})
        EXPECT_NE(CFMetaData(input).GetField(field), nullptr) << field;
    EXPECT_GT(CFMetaData(output).FieldCount(), 0U);
    EXPECT_THAT(properties, HasSubstr("<"));
}

TEST_F(WorkingModel, FindsTheSeriesThatLeads)
{
    ASSERT_NO_FATAL_FAILURE(train({TimeKind::Date, {}, kTrained}));
    const Json network = Json::parse(entry("TCMGraph.json"));
    for (const Json& target : network.at("targets"))
        if (target.at("name") == Json{"sales"})
            for (const Json& predictor : target.at("predictors"))
                if (predictor.at("name") == Json{"advertising"}) {
                    EXPECT_EQ(predictor.at("lag"), 2);
                    EXPECT_NEAR(predictor.at("coefficientSum").get<double>(), 2, 0.2);
                    return;
                }
    FAIL() << network;
}

TEST_F(WorkingModel, TellsValuesThatAreMissing)
{
    ASSERT_NO_FATAL_FAILURE(train({TimeKind::Date, {}, kTrained}));
    MonthlyData data(TimeKind::Date, {}, kTrained);
    data.endSales(kTrained - 2);
    const LocallyUniqueID dataset = SvrDMDataset::Register(data.source());
    std::vector<double> actual;
    std::vector<double> predicted;
    ASSERT_TRUE(viewer->GetScenarioInfo(dataset, path, "month", "-2", "2", {}, {}, {}, "sales", {},
                                        {}, actual, predicted))
        << reason();
    EXPECT_THAT(actual, testing::ElementsAre(MonthlyData::sales(kTrained - 3, 0), kSystemMissing,
                                             kSystemMissing));
    EXPECT_EQ(predicted.size(), 2U);
}

TEST_F(WorkingModel, IsTheSameEachTime)
{
    const MonthlyData data(TimeKind::Date, {"region"}, kTrained);
    ASSERT_NO_FATAL_FAILURE(train(data));
    std::map<std::string, std::string> first;
    for (const char* name : {"TCMModel.json", "TCMGraph.json", "TSDPOutput.json", "StatXML.xml"})
        first[name] = entry(name);
    ASSERT_NO_FATAL_FAILURE(train(data));
    for (const auto& [name, text] : first)
        EXPECT_EQ(entry(name), text) << name;
}

TEST_F(WorkingModel, RefusesDataAndSeriesThatItDoesNotKnow)
{
    ASSERT_NO_FATAL_FAILURE(train({TimeKind::Date, {"region"}, kTrained}));
    const MonthlyData shorter(TimeKind::Date, {}, kTrained);
    const LocallyUniqueID other = SvrDMDataset::Register(shorter.source());
    const LocallyUniqueID own =
        SvrDMDataset::Register(MonthlyData(TimeKind::Date, {"region"}, kTrained).source());
    HVSeriesForecast forecast;
    EXPECT_FALSE(
        viewer->getForecast(other, path, "sales", {"region"}, {"s"}, {1, 0.9, {}}, forecast));
    EXPECT_FALSE(
        viewer->getForecast(own, path, "sales", {"region"}, {"x"}, {1, 0.9, {}}, forecast));
    EXPECT_FALSE(
        viewer->getForecast(own, path, "sales", {"region"}, {"s"}, {1, 1.5, {}}, forecast));
    EXPECT_THAT(reason(), HasSubstr("confidenceLevel"));
    std::string diagram;
    EXPECT_FALSE(
        viewer->getImpactDiagram(own, path, "sales", {"region"}, {"s"}, false, 0, diagram));
    EXPECT_THAT(reason(), HasSubstr("level"));
}
