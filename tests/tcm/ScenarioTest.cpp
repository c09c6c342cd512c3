#include "VexaCases.h"
#include "tcm/ReplayFixture.h"

// What a model predicts for a series: the job, the rows of a range, and failures.

namespace {

using testing::HasSubstr;
using Row = std::vector<WrittenRows::Value>;
using Numbers = std::vector<double>;

const CFField kFlag = realField("$FutureFlag");
const CFField kSales = realField("sales");
const CFField kPredictions = realField("sales_predicted");

constexpr const char* kOneDimension = R"("region")";
constexpr const char* kTwoDimensions = R"("region","shop")";

class Scenario : public Replay
{
protected:
    void SetUp() override
    {
        Replay::SetUp();
        rows = &scored;
    }
    /// Three months of the training, one more, and two beyond the data.
    WrittenRows scored{{kPredictions, kFlag, kSales},
                       {{10.0, 0.0, 1.0},
                        {20.0, 0.0, 2.0},
                        {30.0, 0.0, kSystemMissing},
                        {40.0, 0.0, 4.0},
                        {50.0, 1.0, 5.0},
                        {kSystemMissing, 1.0, 6.0}}};
};

} // namespace

TEST_F(Scenario, AsksForAScoreOfTheSeries)
{
    EXPECT_TRUE(score("day", "0", "-1"));
    EXPECT_THAT(jobs().back(), HasSubstr(R"([["north","sales"]]}},"fit":{"doFit":true},)"))
        << "no forecast";
    scored.rewind();
    putModel(preparationOf(kTwoDimensions));
    EXPECT_TRUE(score("day", "0", "2", {"region", "shop"}, {"north", "old"}));
    EXPECT_THAT(jobs().back(),
                HasSubstr(R"(val scoreConf = {"fieldSetting":{"fieldNameList":{"seriesIDList":)"
                          R"([["north","old","sales"]]}},"forecast":{"forecastSpan":2},)"
                          R"("outputOriginalValue":true})"));
    EXPECT_THAT(jobs().back(), HasSubstr("->tcm:ar(scoreConf, scoreInConf,_)->rtsdp:"));
}

TEST_F(Scenario, ReadsTheRowsOfTheRange)
{
    struct
    {
        const char* start;
        const char* end;
        Numbers actual;
        Numbers predicted;
    } const cases[] = {
        {"0", "0", {kSystemMissing}, {}},
        {"1", "2", {4}, {50}},
        {"-1", "3", {2, kSystemMissing, 4}, {50, kSystemMissing}},
        {"2", "99999999999", {}, {50, kSystemMissing}},
        {"-99999999999", "-2", {1}, {}},
        {"-5", "-3", {}, {}},
        {"1", "0", {}, {}},
        {"4", "9", {}, {}},
    };
    for (const auto& [start, end, actualValues, predictedValues] : cases) {
        SCOPED_TRACE(std::string(start) + " to " + end);
        scored.rewind();
        scored.disposals = 0;
        EXPECT_TRUE(score("day", start, end));
        EXPECT_EQ(actual, actualValues);
        EXPECT_EQ(predicted, predictedValues);
        EXPECT_EQ(scored.disposals, 1);
    }
    scored.rewind();
    EXPECT_TRUE(viewer->GetScenarioInfo(dataset, modelPath, "day", "1", "2", {}, {}, {}, "sales",
                                        {"region"}, {"north"}, actual, predicted));
    EXPECT_EQ(predicted, Numbers{50}) << "appended";
}

TEST_F(Scenario, FailsIfRowsCannotBeRead)
{
    const std::vector<CFField> allFields = {kFlag, kSales, kPredictions};
    struct
    {
        std::vector<CFField> fields;
        std::vector<Row> rows;
        bool result;      ///< of a target
        bool otherResult; ///< of a series that is no target
        Numbers actual;   ///< of a target
    } const cases[] = {
        {allFields, {{0.0, 1.0, 2.0}, {0.0, 3.0, 4.0}}, true, true, {1, 3}},
        {allFields, {{0, 1.0, 2.0}, {1, 3.0, 4.0}}, true, true, {1}}, // the flag as an integer
        {{kFlag, kPredictions}, {{0.0, 1.0}}, false, false, {}},
        {{kSales, kPredictions}, {{0.0, 1.0}}, false, false, {}},
        {{kFlag, kSales}, {{0.0, 1.0}}, true, false, {1}},
        {{kFlag, kSales}, {{0.0, 1.0}, {1.0, 2.0}}, false, false, {1}},
        {allFields, {{0.0, 1.0, 2.0}, {std::nullopt, 3.0, 4.0}}, false, false, {1}},
        {allFields, {{0.0, 1.0, 2.0}, {0.0, std::nullopt, 4.0}}, false, false, {1}},
    };
    for (const auto& [fields, values, result, otherResult, actualValues] : cases) {
        SCOPED_TRACE(std::to_string(fields.size()) + " " + std::to_string(values.size()));
        WrittenRows written(fields, values);
        rows = &written;
        putModel(preparationOf(kOneDimension));
        EXPECT_EQ(score("day", "-2", "0"), result);
        EXPECT_EQ(actual, actualValues);
        written.rewind();
        putModel(preparationOf(kTwoDimensions));
        EXPECT_EQ(score("day", "-2", "0", {"region", "shop"}, {"north", "old"}), otherResult);
        EXPECT_EQ(written.disposals, 2);
    }
    rows = nullptr;
    EXPECT_FALSE(score("day", "0", "0")) << "no file";
}

TEST_F(Scenario, FailuresOfTheEngineLeaveNothing)
{
    for (const Fault fault : {Fault::Engine, Fault::Java, Fault::Standard, Fault::Unknown})
        for (const char* call : {"createExecution", "prepare", "addInputIterator", "execute",
                                 "getOutputIterator", "dispose"}) {
            SCOPED_TRACE(std::string(nameOf(fault)) + " exception at " + call);
            scored.rewind();
            engine.throwAt(call, fault);
            try {
                EXPECT_FALSE(score("month", "0", "0"));
            } catch (...) {
                EXPECT_NE(call, std::string("execute"));
            }
            engine.throwAt(call, Fault::None);
            EXPECT_EQ(openExecutions(engine), 0);
            EXPECT_EQ(scratchFiles().size(), 1U) << "the model alone";
            runner->cleanJRef();
            EXPECT_EQ(jni().liveGlobals(), 0);
        }
    scored.rewind();
    scored.failsToDispose = true;
    EXPECT_THROW(score("day", "0", "0"), std::runtime_error) << "of the rows that were read";
    EXPECT_EQ(openExecutions(engine), 0);
}

TEST_F(Scenario, ForecastsWithBoundsAndGivenValues)
{
    const std::vector<CFField> fields = {CFField("month", CFField::Continuous, CFField::Date),
                                         kSales,
                                         kFlag,
                                         kPredictions,
                                         realField("sales_lower"),
                                         realField("sales_upper")};
    WrittenRows points(fields, {{18262.0, 1.0, 0, std::nullopt, kSystemMissing, std::nullopt},
                                {18293.0, std::nullopt, 1, 5.0, 4.0, 6.0}});
    HVSeriesForecast forecast;
    const HVForecastRequest request{
        2, 0.9, {{{"south", "sales"}, 0, 0.1, true}, {{"north", "sales"}, 2, 7, false}}};
    const auto ask = [&](WrittenRows& written, const char* region) {
        rows = &written;
        return viewer->getForecast(dataset, modelPath, "sales", {"region"}, {region}, request,
                                   forecast);
    };
    ASSERT_TRUE(ask(points, "north"));
    EXPECT_THAT(viewer->getMessages(), testing::ElementsAre("prepared", "scored"));
    EXPECT_THAT(plainJobs().back(),
                HasSubstr(R"(},"fit":{"doFit":true},"outputOriginalValue":true,)"
                          R"("confidenceLevel":0.9,"scenario":[{"series":["south","sales"],)"
                          R"("change":0.1},{"series":["north","sales"],"ahead":2,"value":7.0}]})"));
    ASSERT_EQ(forecast.points.size(), 2U);
    EXPECT_EQ(forecast.points[0].predicted, kSystemMissing);
    EXPECT_EQ(forecast.points[1].time, Numbers{18293.0});
    EXPECT_EQ(forecast.points[1].actual, kSystemMissing);
    EXPECT_EQ(forecast.points[1].upper, 6.0);
    EXPECT_EQ(points.disposals, 1);
    EXPECT_FALSE(ask(scored, "north")) << "there are no bounds";
    EXPECT_EQ(scored.disposals, 1);
    EXPECT_FALSE(ask(points, "nowhere"));
    WrittenRows untimed(fields, {{std::nullopt, 1.0, 0, 5.0, 4.0, 6.0}});
    EXPECT_FALSE(ask(untimed, "north")) << "a point has no time";
}
