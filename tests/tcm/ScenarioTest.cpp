#include "JNIException.h"
#include "VexaCases.h"
#include "tcm/ReplayFixture.h"

// What a model predicts for a series: the job, the rows of a range, and what can go wrong.

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Row = std::vector<WrittenRows::Value>;
using Numbers = std::vector<double>;

const std::vector<CFField> kFields = {realField("sales_predicted"), realField("$FutureFlag"),
                                      realField("sales")};

constexpr const char* kOneDimension = R"("region")";
constexpr const char* kTwoDimensions = R"("region","shop")";

/// Three months that the model was trained on, one more, and two beyond the data.
std::vector<Row> sixMonths()
{
    return {{10.0, 0.0, 1.0}, {20.0, 0.0, 2.0}, {30.0, 0.0, kSystemMissing},
            {40.0, 0.0, 4.0}, {50.0, 1.0, 5.0}, {kSystemMissing, 1.0, 6.0}};
}

class Scenario : public Replay
{
protected:
    void SetUp() override
    {
        Replay::SetUp();
        rows = &scored;
    }

    WrittenRows scored{kFields, sixMonths()};
};

} // namespace

TEST_F(Scenario, AsksForAScoreOfTheSeries)
{
    struct ScoreCase
    {
        Names dimensions;
        Names values;
        const char* end;
        const char* settings;
        const char* step;
    };
    const ScoreCase cases[] = {
        {{"region"},
         {"north"},
         "2",
         R"({"fieldSetting":{"fieldType":"INCLUDED_TARGET_LIST","fieldNameList":{"seriesIDList":)"
         R"([["north","sales"]]}},"forecast":{"doForecast":true,"forecastSpan":2},)"
         R"("fit":{"doFit":true},"outputOriginalValue":true})",
         "tcm:score"},
        {{"region"},
         {"north"},
         "-1",
         R"({"fieldSetting":{"fieldType":"INCLUDED_TARGET_LIST","fieldNameList":{"seriesIDList":)"
         R"([["north","sales"]]}},"fit":{"doFit":true},"outputOriginalValue":true})",
         "tcm:score"},
        {{"region", "shop"},
         {"north", "old"},
         "2",
         R"({"fieldSetting":{"fieldNameList":{"seriesIDList":[["north","old","sales"]]}},)"
         R"("forecast":{"forecastSpan":2},"outputOriginalValue":true})",
         "tcm:ar"},
    };
    for (const auto& [dimensions, values, end, settings, step] : cases) {
        SCOPED_TRACE(settings);
        scored.rewind();
        putModel(preparationOf(dimensions.size() == 2 ? kTwoDimensions : kOneDimension));
        engine.clearCalls();
        EXPECT_TRUE(score("day", "0", end, dimensions, values));
        ASSERT_EQ(jobs().size(), 4U);
        EXPECT_EQ(plainJobs().back(),
                  R"(val readerConf = {"filesystem":{"dataModel":"T5","locations":[{"path":"T4",)"
                  R"("parser":{"name":"hvbf","config":{}}}]}})"
                  "\nval scoreConf = " +
                      std::string(settings) +
                      "\nval scoreInConf = [{\"name\":\"InputTCMXML\",\"uri\":\"MODEL\"}]\n"
                      "val rtsdpConf = {\"exportFutureFlag\":true}\n"
                      "val rtsdpInConf = [{\"name\":\"JSON\",\"uri\":\"T3\"}]\n"
                      R"(val writerConf = {"dataDestination":"T6","dataModelDestination":"T7",)"
                      R"("type":"hvbf"})"
                      "\nread(readerConf)->" +
                      step +
                      "(scoreConf, scoreInConf,_)->rtsdp:rtsdp(rtsdpConf, rtsdpInConf, _)->"
                      "write(writerConf)");
    }
}

TEST_F(Scenario, ReadsTheRowsOfTheRange)
{
    struct RangeCase
    {
        const char* start;
        const char* end;
        Numbers actual;
        Numbers predicted;
    };
    const RangeCase cases[] = {
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
    EXPECT_THAT(predicted, ElementsAre(50)) << "behind what is there";
}

TEST_F(Scenario, TakesFlagsThatAreWholeNumbers)
{
    WrittenRows whole(kFields, {{1.0, 0, 2.0}, {3.0, 1, 4.0}});
    rows = &whole;
    EXPECT_TRUE(score("day", "-2", "-1"));
    EXPECT_THAT(actual, ElementsAre(2));
    EXPECT_THAT(predicted, ElementsAre(3));
}

TEST_F(Scenario, FailsWhereRowsCannotBeRead)
{
    struct RowsCase
    {
        std::vector<CFField> fields;
        std::vector<Row> rows;
        bool result;      ///< of a target
        bool otherResult; ///< of a series of its own past
        Numbers actual;   ///< of a target
    };
    const CFField flag = realField("$FutureFlag");
    const CFField sales = realField("sales");
    const CFField predictions = realField("sales_predicted");
    const RowsCase cases[] = {
        {{flag, sales, predictions}, {{0.0, 1.0, 2.0}, {0.0, 3.0, 4.0}}, true, true, {1, 3}},
        {{flag, predictions}, {{0.0, 1.0}}, false, false, {}},
        {{sales, predictions}, {{0.0, 1.0}}, false, false, {}},
        {{flag, sales}, {{0.0, 1.0}}, true, false, {1}},
        {{flag, sales}, {{0.0, 1.0}, {1.0, 2.0}}, false, false, {1}},
        {{flag, sales, predictions},
         {{0.0, 1.0, 2.0}, {std::nullopt, 3.0, 4.0}},
         false,
         false,
         {1}},
        {{flag, sales, predictions},
         {{0.0, 1.0, 2.0}, {0.0, std::nullopt, 4.0}},
         false,
         false,
         {1}},
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
        EXPECT_EQ(openExecutions(engine), 0);
    }
    rows = nullptr;
    EXPECT_FALSE(score("day", "0", "0")) << "no file";
}

TEST_F(Scenario, ScoresNoSeriesThatTheModelDoesNotKnow)
{
    EXPECT_FALSE(viewer->GetScenarioInfo(dataset, modelPath, "day", "0", "0", {}, {}, {}, "",
                                         {"region"}, {"north"}, actual, predicted));
    EXPECT_THAT(engine.calls(), IsEmpty());
    EXPECT_FALSE(score("day", "0", "0", {"region"}, {"south"}));
    EXPECT_EQ(jobs().size(), 3U) << "the preparation only";
    EXPECT_EQ(reason(), "");
}

TEST_F(Scenario, FailuresOfTheEngineLeaveNothing)
{
    const Names files = scratchFiles();
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
            EXPECT_EQ(scratchFiles(), files);
            runner->cleanJRef();
            EXPECT_EQ(jni().liveGlobals(), 0);
        }
}

// Whichever call of the machine fails, what was made goes.
TEST_F(Scenario, FailuresOfTheMachineLeaveNothing)
{
    const Names files = scratchFiles();
    bool result = false;
    bool reached = true;
    for (int number = 1; reached; ++number) {
        SCOPED_TRACE(number);
        scored.rewind();
        jni().failAt(number, RecordingJni::Fault::OutOfMemory);
        try {
            result = score("month", "0", "0");
        } catch (const JNIException&) {
        }
        reached = jni().endFault();
        EXPECT_EQ(openExecutions(engine), 0);
        EXPECT_EQ(scratchFiles(), files);
        runner->cleanJRef();
        EXPECT_EQ(jni().liveGlobals(), 0);
        engine.clearCalls();
    }
    EXPECT_TRUE(result) << "the last run meets no failure";
}

TEST_F(Scenario, ForecastsWithBoundsAndGivenValues)
{
    using testing::HasSubstr;
    WrittenRows points({CFField("month", CFField::Continuous, CFField::Date), realField("sales"),
                        realField("$FutureFlag"), realField("sales_predicted"),
                        realField("sales_lower"), realField("sales_upper")},
                       {{18262.0, 1.0, 0, std::nullopt, kSystemMissing, std::nullopt},
                        {18293.0, std::nullopt, 1, 5.0, 4.0, 6.0}});
    rows = &points;
    HVSeriesForecast forecast;
    const HVForecastRequest request{
        2, 0.9, {{{"south", "sales"}, 0, 0.1, true}, {{"north", "sales"}, 2, 7, false}}};
    ASSERT_TRUE(
        viewer->getForecast(dataset, modelPath, "sales", {"region"}, {"north"}, request, forecast));
    EXPECT_THAT(plainJobs().back(),
                HasSubstr(R"(},"fit":{"doFit":true},"outputOriginalValue":true,)"
                          R"("confidenceLevel":0.9,"scenario":[{"series":["south","sales"],)"
                          R"("change":0.1},{"series":["north","sales"],"ahead":2,"value":7.0}]})"));
    ASSERT_EQ(forecast.timeFields.size(), 1U);
    EXPECT_EQ(forecast.timeFields[0].GetName(), "month");
    ASSERT_EQ(forecast.points.size(), 2U);
    EXPECT_THAT(forecast.points[0].time, ElementsAre(18262.0));
    EXPECT_FALSE(forecast.points[0].isFuture);
    EXPECT_EQ(forecast.points[0].predicted, kSystemMissing);
    EXPECT_TRUE(forecast.points[1].isFuture);
    EXPECT_EQ(forecast.points[1].actual, kSystemMissing);
    EXPECT_EQ(forecast.points[1].upper, 6.0);
    EXPECT_EQ(points.disposals, 1);

    WrittenRows incomplete(kFields, sixMonths());
    rows = &incomplete;
    EXPECT_FALSE(
        viewer->getForecast(dataset, modelPath, "sales", {"region"}, {"north"}, {}, forecast));
    EXPECT_EQ(incomplete.disposals, 1);
    EXPECT_FALSE(
        viewer->getForecast(dataset, modelPath, "sales", {"region"}, {"nowhere"}, {}, forecast));
}
