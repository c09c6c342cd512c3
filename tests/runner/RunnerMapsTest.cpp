#include <functional>

#include "JNIException.h"
#include "runner/RunnerFixture.h"

// Questions about maps: what the runner asks, what it makes of a failure, and how answers are read.

namespace {

using Names = std::vector<std::string>;

class RunnerMaps : public RunnerFixture
{
};

/// A question, with what was there before it.
struct Question
{
    const char* call; ///< as the engine gets it
    std::function<std::string(HVRunner&)> ask;
    const char* afterFault; ///< what is left of an answer when the engine throws
};

std::string joined(const Names& names)
{
    std::string text;
    for (const std::string& name : names)
        text += name + ";";
    return text;
}

const Question kQuestions[] = {
    {"getCoordinatesSystemInfo(WGS 84)",
     [](HVRunner& runner) { return runner.getCoordinatesSystemInfo("WGS 84"); }, ""},
    {"getCoordinatesSystemInfo(-3)",
     [](HVRunner& runner) { return runner.getCoordinatesSystemInfo(-3); }, ""},
    {"getGeographics",
     [](HVRunner& runner) {
         Names names;
         runner.getGeographics(names);
         return names.empty() ? "" : names.front();
     },
     ""},
    {"getProjections",
     [](HVRunner& runner) {
         Names names;
         runner.getProjections(names);
         return names.empty() ? "" : names.front();
     },
     ""},
    {"getRecommendPCSs({})",
     [](HVRunner& runner) {
         Names names;
         runner.getRecommendPCSs(names, "{}");
         return names.empty() ? "" : names.front();
     },
     ""},
    {"getRecommendPCSs({};-7)",
     [](HVRunner& runner) {
         Names names;
         runner.getRecommendPCSs(names, "{}", -7);
         return names.empty() ? "" : names.front();
     },
     ""},
    {"getMapServiceLayers(http://a)",
     [](HVRunner& runner) {
         std::string layers = "before";
         return (runner.getMapServiceLayers("http://a", layers) ? "true " : "false ") + layers;
     },
     "true "},
};

TEST_F(RunnerMaps, AQuestionEndsTheJobAndSwallowsFaults)
{
    for (const Question& question : kQuestions) {
        SCOPED_TRACE(question.call);
        HVRunner runner;
        const std::string call = question.call;
        for (const Fault fault : {Fault::Engine, Fault::Java, Fault::Standard, Fault::Unknown}) {
            engine.throwAt(call.substr(0, call.find('(')), fault);
            EXPECT_EQ(question.ask(runner), question.afterFault) << nameOf(fault);
        }
        engine.throwAt(call.substr(0, call.find('(')), Fault::None);
        engine.setMetadata("answer");
        for (const Fault fault : {Fault::Engine, Fault::Java, Fault::Standard, Fault::Unknown}) {
            runner.prepareHVLJob("job");
            engine.throwAt("dispose", fault);
            EXPECT_EQ(question.ask(runner), question.afterFault) << "dispose, " << nameOf(fault);
        }
        engine.throwAt("dispose", Fault::None);
        runner.prepareHVLJob("job");
        engine.clearCalls();
        EXPECT_TRUE(question.ask(runner).ends_with("answer"));
        EXPECT_EQ(engine.callNames(), (Names{"dispose", "delete", call}));
    }
    HVRunner runner;
    runner.prepareHVLJob("job");
    engine.clearCalls();
    EXPECT_EQ(runner.getCoordinatesSystemInfo(""), "");
    EXPECT_TRUE(engine.callNames().empty()) << "an empty name asks nobody";
    engine.setMetadata("");
    std::string layers = "before";
    EXPECT_FALSE(runner.getMapServiceLayers("u", layers)) << "nobody failed, nothing was said";
}

TEST_F(RunnerMaps, NamesOfAFailedQuestionAreForgotten)
{
    HVRunner runner;
    engine.throwAt("getProjections", Fault::Engine);
    Names names{"before"};
    runner.getProjections(names);
    EXPECT_TRUE(names.empty());
    engine.throwAt("getRecommendPCSs", Fault::Java);
    names = {"before"};
    runner.getRecommendPCSs(names, "{}", 1);
    EXPECT_TRUE(names.empty());
}

TEST_F(RunnerMaps, ASystemIsRead)
{
    const HVRunner runner;
    int wkid = 5;
    std::string name = "before";
    std::string wkt;
    auto type = HVRunner::CSTYPE_Geographic;
    EXPECT_FALSE(HVRunner::ParseCoordinatesSystemInfo("", wkid, name, wkt, type));
    EXPECT_EQ(type, HVRunner::CSTYPE_None);
    EXPECT_EQ(name, "before");
    EXPECT_TRUE(HVRunner::ParseCoordinatesSystemInfo(
        R"({"wkid":25833,"name":"Zürich","wkt":"PROJCS[\"a\"]","isProjection":true})", wkid, name,
        wkt, type));
    EXPECT_EQ(wkid, 25833);
    EXPECT_EQ(name, "Zürich");
    EXPECT_EQ(wkt, "PROJCS[\"a\"]");
    EXPECT_EQ(type, HVRunner::CSTYPE_Projected);
    EXPECT_TRUE(HVRunner::ParseCoordinatesSystemInfo("{}", wkid, name, wkt, type));
    EXPECT_EQ(type, HVRunner::CSTYPE_Geographic);
}

TEST_F(RunnerMaps, LayersAreRead)
{
    const HVRunner runner;
    std::vector<int> ids{1};
    Names names{"before"};
    EXPECT_FALSE(HVRunner::ParseMapServiceLayers("", ids, names));
    EXPECT_EQ(names, Names{"before"});
    constexpr const char* kLayers =
        R"([{"value":"0","name":"all","keys":"a,b","description":"d","features":"f",)"
        R"("subLayers":[2,"3"]},{"value":7,"name":"x"}])";
    EXPECT_TRUE(HVRunner::ParseMapServiceLayers(kLayers, ids, names));
    EXPECT_EQ(ids, (std::vector<int>{0, 7}));
    EXPECT_EQ(names, (Names{"all", "x"}));
    std::vector<HVRunner::LayerInfo> layers(1);
    EXPECT_FALSE(HVRunner::ParseMapServiceLayers("", layers));
    ASSERT_TRUE(HVRunner::ParseMapServiceLayers(kLayers, layers));
    ASSERT_EQ(layers.size(), 2U);
    EXPECT_EQ(layers[0].subLayers, (std::vector<int>{2, 3}));
    EXPECT_EQ(layers[0].keys + layers[0].description + layers[0].features, "a,bdf");
    EXPECT_EQ(layers[1].id, 7);
    EXPECT_TRUE(layers[1].subLayers.empty());
    EXPECT_TRUE(HVRunner::ParseMapServiceLayers("[]", ids, names));
    EXPECT_TRUE(ids.empty());
}

TEST_F(RunnerMaps, RecommendedSystemsAreRead)
{
    const HVRunner runner;
    int id = 5;
    std::vector<HVRunner::RecommendPCS> systems(1);
    for (const char* other : {"", "{}", R"({"1":[],"2":[]})"})
        EXPECT_FALSE(HVRunner::ParseRecommendPCS(other, id, systems)) << other;
    EXPECT_EQ(id, 5);
    EXPECT_EQ(systems.size(), 1U);
    ASSERT_TRUE(HVRunner::ParseRecommendPCS(
        R"({"-2":[{"wkid":3857,"name":"n","wkt":"w","trans_methods":)"
        R"([{"z":"forward","b":"inverse"},{"a":"Forward"}]},{"name":"m","trans_methods":[]}]})",
        id, systems));
    EXPECT_EQ(id, -2);
    ASSERT_EQ(systems.size(), 2U);
    EXPECT_EQ(systems[0].wkid, 3857);
    EXPECT_EQ(systems[0].name + systems[0].wkt, "nw");
    EXPECT_EQ(joined(systems[0].transMethods), "b;z;a;");
    EXPECT_EQ(systems[0].transForward, (std::vector<bool>{false, true, false}));
    EXPECT_TRUE(systems[1].transMethods.empty());
    EXPECT_TRUE(HVRunner::ParseRecommendPCS(R"({"0":[]})", id, systems));
    EXPECT_TRUE(systems.empty());
}

TEST_F(RunnerMaps, WhatIsNoJsonThrows)
{
    const HVRunner runner;
    int number = 0;
    std::string text;
    HVRunner::CSTYPE type{};
    std::vector<int> ids;
    Names names;
    std::vector<HVRunner::LayerInfo> layers;
    std::vector<HVRunner::RecommendPCS> systems;
    for (const char* json : {"{", "nonsense"}) {
        const std::function<void()> readers[] = {
            [&] { HVRunner::ParseCoordinatesSystemInfo(json, number, text, text, type); },
            [&] { HVRunner::ParseMapServiceLayers(json, ids, names); },
            [&] { HVRunner::ParseMapServiceLayers(json, layers); },
            [&] { HVRunner::ParseRecommendPCS(json, number, systems); },
        };
        for (const auto& reader : readers)
            try {
                reader();
                ADD_FAILURE() << "nothing thrown";
            } catch (const JNIException& exception) {
                EXPECT_EQ(exception.className(), "com.zor.json.java.JSONException");
                EXPECT_NE(exception.message(), "");
            }
    }
}

TEST_F(RunnerMaps, AreasAreCollected)
{
    const HVRunner runner;
    HVRunner::RecommendPCSInputMaker maker;
    EXPECT_EQ(maker.toString(), "{}");
    maker.addInput(-1, 1, 2, 3, 4);
    maker.addInput(7, -0.5, 1e-3, 3, 4);
    maker.addInput(-1, 5, 2, 3, 4);
    EXPECT_EQ(maker.toString(),
              R"({"-1":{"leftUpperX":5.0,"leftUpperY":2.0,"rightLowerX":3.0,"rightLowerY":4.0},)"
              R"("7":{"leftUpperX":-0.5,"leftUpperY":0.001,"rightLowerX":3.0,"rightLowerY":4.0}})");
}

} // namespace
