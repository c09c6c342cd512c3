#include <cstdlib>

#include "support/Paths.h"
#include "tcm/ViewerFixture.h"

// What a model can do: the job that asks, and what is read from the model and from the answer.

namespace {

const Entries kModel = {{"StatXML.xml", "<StatXML><DataModel>full</DataModel></StatXML>"},
                        {"TCMGraph.json", R"({"targets":[]})"},
                        {"TSDPOutput.json", R"({"settings":{}})"}};
const Entries kAnswer = {{"ScoreInputDataModel.xml", "<in/>"},
                         {"ScoreOutputDataModel.xml", "<out/>"},
                         {"ScoreModelProp.xml", "<properties/>"}};

class Capabilities : public ViewerTest
{
protected:
    bool ask(const std::string& modelPath, const Entries& answer)
    {
        engine.setScript([=, this](ScriptedJob& job) {
            putArchive(placeOf(jobs().back(), "ModelCapabilities"), answer);
            job.listener().onSuccess();
        });
        texts.assign(6, "before");
        return viewer->getModelCapabilities(modelPath, texts[0], texts[1], texts[2], texts[3],
                                            texts[4], texts[5]);
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
    const std::string path = putModel(kModel);
    ASSERT_TRUE(ask(path, kAnswer));
    EXPECT_EQ(texts, (Names{"<DataModel>full</DataModel>", "<in/>", "<out/>", "<properties/>",
                            R"({"targets":[]})", R"({"settings":{}})"}));
    for (const std::string& file : traces)
        EXPECT_TRUE(std::filesystem::exists(traceFolder / file)) << file;
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
        {"<DataModel/>", ""},
        {"", ""},
    };
    for (const auto& [document, model] : cases) {
        EXPECT_EQ(ask(putModel(with(kModel, "StatXML.xml", document)), kAnswer), model[0] != '\0');
        EXPECT_EQ(texts[0], model) << document;
    }
}

TEST_F(Capabilities, AMissingEntryEndsTheReading)
{
    // In the order of reading, with the place of the text among the arguments.
    const std::pair<const char*, std::size_t> order[] = {
        {"StatXML.xml", 0},
        {"TCMGraph.json", 4},
        {"TSDPOutput.json", 5},
        {"ScoreInputDataModel.xml", 1},
        {"ScoreOutputDataModel.xml", 2},
        {"ScoreModelProp.xml", 3},
    };
    for (std::size_t missing = 0; missing < std::size(order); ++missing) {
        SCOPED_TRACE(order[missing].first);
        EXPECT_FALSE(ask(putModel(without(kModel, order[missing].first)),
                         without(kAnswer, order[missing].first)));
        EXPECT_EQ(reason(), "");
        for (std::size_t i = 0; i < std::size(order); ++i)
            EXPECT_EQ(texts[order[i].second] == "before", i >= missing) << i;
    }
    EXPECT_FALSE(ask(folder().name("missing.tcm"), kAnswer));
    engine.throwAt("execute", Fault::Engine);
    EXPECT_FALSE(ask(putModel(kModel), kAnswer));
    EXPECT_EQ(reason(), "scripted");
    EXPECT_EQ(texts, Names(6, "before")) << "a job that fails leaves the model unread";
}
