#include "tcm/HVInteractiveTSR.h"

#include "data/HVSimpleContainer.h"
#include "dialog/RequestScope.h"
#include "runner/HVRunner.h"
#include "support/Tracing.h"
#include "support/ZipReader.h"
#include "tcm/ModelFile.h"
#include "tcm/TemporalJobText.h"

// What a model can do.

namespace {

constexpr const char* kOperation = "getModelCapabilities";

/// The results of a request.
struct Capabilities
{
    std::string& fullDataModel;
    std::string& inputDataModel;
    std::string& outputDataModel;
    std::string& modelProperties;
    std::string& netGraph;
    std::string& tsdpOutput;

    bool readModel(const std::string& modelPath) const
    {
        ZipReader model(modelPath);
        return readFullDataModel(model, fullDataModel) &&
               readEntry(model, kNetworkEntry, netGraph) &&
               readEntry(model, kPreparationEntry, tsdpOutput);
    }

    /// Reads the documents that the engine wrote.
    bool readAnswer(const HVSimpleContainer& container) const
    {
        ZipReader answer(container.getGenericPath());
        return readEntry(answer, "ScoreInputDataModel.xml", inputDataModel) &&
               readEntry(answer, "ScoreOutputDataModel.xml", outputDataModel) &&
               readEntry(answer, "ScoreModelProp.xml", modelProperties);
    }

    void trace() const
    {
        traceXMLFile(fullDataModel, "TSFullDMContent", kOperation);
        traceXMLFile(inputDataModel, "TSInputDMContent", kOperation);
        traceXMLFile(outputDataModel, "TSOutputDMContent", kOperation);
        traceXMLFile(modelProperties, "TSModelPropContent", kOperation);
        traceJSONFile(netGraph, "TSNetGraphContent", kOperation);
        traceJSONFile(tsdpOutput, "TSDPOutputContent", kOperation);
    }
};

/// Makes the scoring component describe the model. It scores nothing.
std::string GenerateScoringHVL(const std::string& modelPath, const HVSimpleContainer& container)
{
    JNIJSONObject settings;
    settings.put("isModelCapabilities", true);
    return definition("scoringConf", settings.toString()) +
           modelLine("inCon", "InputPMML", modelPath) + outputLine("outCon", container) +
           "scoring:scoring(scoringConf, inCon, outCon)";
}

} // namespace

HVInteractiveTSR::HVInteractiveTSR() = default;

HVInteractiveTSR::~HVInteractiveTSR() = default;

bool HVInteractiveTSR::getModelCapabilities(const std::string& modelPath,
                                            std::string& fullDataModel, std::string& inputDataModel,
                                            std::string& outputDataModel,
                                            std::string& modelProperties, std::string& netGraph,
                                            std::string& tsdpOutput)
{
    const Capabilities capabilities{fullDataModel,   inputDataModel, outputDataModel,
                                    modelProperties, netGraph,       tsdpOutput};
    beginRequest();
    const HVSimpleContainer container("ModelCapabilities", "");
    RequestScope request(*this);
    const std::string job = GenerateScoringHVL(modelPath, container);
    traceJSONFile(job, "HvlJobText", kOperation);
    const bool isRead = runner().prepareHVLJob(job) && tryRunHV(runner()) &&
                        capabilities.readModel(modelPath) && capabilities.readAnswer(container);
    request.end();
    if (isRead)
        capabilities.trace();
    return isRead;
}
