#include <cstdlib>

#include "support/Paths.h"
#include "tcm/ViewerFixture.h"

// What a model can do: the job that asks, and what is read of the model and of the answer.

namespace {

using testing::ElementsAre;

const Entries kModel = {{"StatXML.xml", "<StatXML><DataModel>full</DataModel></StatXML>"},
                        {"TCMGraph.json", R"({"targets":[]})"},
                        {"TSDPOutput.json", R"({"settings":{}})"}};
const Entries kAnswer = {{"ScoreInputDataModel.xml", "<in/>"},
                         {"ScoreOutputDataModel.xml", "<out/>"},
                         {"ScoreModelProp.xml", "<properties/>"}};

Entries without(Entries entries, const std::string& name)
{
    entries.erase(name);
    return entries;
}

Entries with(Entries entries, const std::string& name, const std::string& text)
{
    entries[name] = text;
    return entries;
}

class Capabilities : public ViewerTest
{
protected:
    bool ask(const std::string& modelPath)
    {
        texts.assign(6, "before");
        return viewer->getModelCapabilities(modelPath, texts[0], texts[1], texts[2], texts[3],
                                            texts[4], texts[5]);
    }

    void answerWith(const Entries& entries)
    {
        engine.setScript([=, this](ScriptedJob& job) {
            putArchive(placeOf(jobs().back(), "ModelCapabilities"), entries);
            job.listener().onSuccess();
        });
    }

    /// In the order of the arguments.
    Names texts;
};

} // namespace

TEST_F(Capabilities, ComeFromTheModelAndFromTheEngine)
{
    const std::filesystem::path traceFolder(std::getenv("HV_STAT_DEBUG_DIR"));
    const Names traces = {"HvlJobText_getModelCapabilities.json",
                          "TSFullDMContent_getModelCapabilities.xml",
                          "TSInputDMContent_getModelCapabilities.xml",
                          "TSOutputDMContent_getModelCapabilities.xml",
                          "TSModelPropContent_getModelCapabilities.xml",
                          "TSNetGraphContent_getModelCapabilities.json",
                          "TSDPOutputContent_getModelCapabilities.json"};
    for (const std::string& file : traces)
        std::filesystem::remove(traceFolder / file);
    answerWith(kAnswer);
    const std::string path = putModel(kModel);
    ASSERT_TRUE(ask(path));
    EXPECT_THAT(texts, ElementsAre("<DataModel>full</DataModel>", "<in/>", "<out/>",
                                   "<properties/>", R"({"targets":[]})", R"({"settings":{}})"));
    for (const std::string& file : traces)
        EXPECT_TRUE(std::filesystem::exists(traceFolder / file)) << file;
    ASSERT_EQ(jobs().size(), 1U);
    const std::string job = jobs().front();
    EXPECT_EQ(job, "val scoringConf = {\"isModelCapabilities\":true}\n"
                   "val inCon = [{\"name\":\"InputPMML\",\"uri\":\"" +
                       NormalizeHvlPathU(path, "file") +
                       "\"}]\n"
                       "val outCon = [{\"export\":true,\"name\":\"ModelCapabilities\","
                       "\"uri\":\"file:///" +
                       placeOf(job, "ModelCapabilities") +
                       "\"}]\n"
                       "scoring:scoring(scoringConf, inCon, outCon)");
}

TEST_F(Capabilities, TheDataModelIsCutOutOfItsDocument)
{
    const std::pair<const char*, const char*> cases[] = {
        {"x<DataModel>a</DataModel>y</DataModel>", "<DataModel>a</DataModel>"},
        {"</DataModel><DataModel>a", "<DataModel>a</DataModel>"},
        {"<DataModel><DataModel>", "<DataModel><DataModel></DataModel>"},
        {"<DataModel/>", nullptr},
        {"", nullptr},
    };
    answerWith(kAnswer);
    for (const auto& [document, model] : cases) {
        SCOPED_TRACE(document);
        EXPECT_EQ(ask(putModel(with(kModel, "StatXML.xml", document))), model != nullptr);
        EXPECT_EQ(texts[0], model == nullptr ? "" : model);
    }
}

TEST_F(Capabilities, WhatLacksEndsTheReadingAndLeavesWhatWasRead)
{
    struct
    {
        Entries model;
        Entries answer;
        Names texts;
    } const cases[] = {
        {without(kModel, "StatXML.xml"), kAnswer, Names(6, "before")},
        {without(kModel, "TCMGraph.json"),
         kAnswer,
         {"<DataModel>full</DataModel>", "before", "before", "before", "before", "before"}},
        {without(kModel, "TSDPOutput.json"),
         kAnswer,
         {"<DataModel>full</DataModel>", "before", "before", "before", R"({"targets":[]})",
          "before"}},
        {kModel,
         without(kAnswer, "ScoreOutputDataModel.xml"),
         {"<DataModel>full</DataModel>", "<in/>", "before", "before", R"({"targets":[]})",
          R"({"settings":{}})"}},
    };
    for (const auto& [model, answer, expected] : cases) {
        answerWith(answer);
        EXPECT_FALSE(ask(putModel(model)));
        EXPECT_EQ(texts, expected);
    }
    EXPECT_FALSE(ask(folder().name("missing.tcm")));
}

TEST_F(Capabilities, AJobThatFailsHasAReasonAndLeavesTheModelUnread)
{
    const std::string path = putModel(kModel);
    engine.setScript([](ScriptedJob& job) { job.listener().onError("id", "no model", ""); });
    std::string id;
    std::string text;
    std::string detail;
    EXPECT_FALSE(ask(path));
    EXPECT_TRUE(viewer->hasError(id, text, detail));
    EXPECT_EQ(text, "no model");
    EXPECT_EQ(texts, Names(6, "before"));

    engine.throwAt("execute", Fault::Engine);
    EXPECT_FALSE(ask(path));
    engine.throwAt("prepare", Fault::Standard);
    EXPECT_ANY_THROW(ask(path));
    EXPECT_EQ(scratchFiles().size(), 1U) << "the model alone";
}
