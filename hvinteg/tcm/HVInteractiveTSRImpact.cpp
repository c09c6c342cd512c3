#include "CFAppHost.h"
#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "dialog/RequestScope.h"
#include "hvl/TextJob.h"
#include "runner/HVRunner.h"
#include "support/Tracing.h"
#include "support/ZipReader.h"
#include "tcm/HVInteractiveTSR.h"
#include "tcm/ModelFile.h"
#include "tcm/PreparationReplay.h"
#include "tcm/TemporalJobText.h"

// The causes and effects of a series, and other statistics of a model.

namespace {

/// One half of the diagram.
JNIJSONObject artifact(const char* name, JNIJSONArray& target, int level)
{
    JNIJSONObject json;
    json.put("name", name);
    json.put("target", &target);
    json.put("level", level);
    return json;
}

/// Asks for artifacts in the host's locale, with series by their names.
std::string outputSettings(JNIJSONArray& artifacts)
{
    JNIJSONObject settings;
    settings.put("artifacts", &artifacts);
    settings.put("locale", CFAppHost::getInstance()->getLocale().c_str());
    settings.put("timeFormat", "hh:mm:ss");
    settings.put("isEncoded", false);
    return settings.toString();
}

std::string GetTargetsOutputSetting(const std::vector<std::string>& series, int level)
{
    JNIJSONArray names;
    for (const std::string& name : series)
        names.add(name.c_str());
    JNIJSONArray target;
    target.add(&names);
    JNIJSONObject effects = artifact("interpretation.ImpactDiagramEffects", target, level);
    JNIJSONObject causes = artifact("interpretation.ImpactDiagramCauses", target, level);
    JNIJSONArray artifacts;
    artifacts.add(&effects);
    artifacts.add(&causes);
    return outputSettings(artifacts);
}

/// The lines of both kinds of job.
std::string outputLines(const std::string& modelPath, const std::string& settings,
                        const HVSimpleContainer& output)
{
    return definition("outputConf", settings) + modelLine("inputCons", "TCM", modelPath) +
           outputLine("outputCons", output);
}

/// The job on prepared data, and the job on the model alone.
std::string GenerateImpactDiagramHVL(const PreparationReplay& data, const std::string& settings,
                                     const HVSimpleContainer& output)
{
    return readerLine(data.prepared) + GenerateRtsdpConf(data.output.getAbsolutePath()) +
           outputLines(data.modelPath, settings, output) +
           "read(readerConf)->rtsdp:rtsdp(rtsdpConf, rtsdpInConf, _)"
           "->OutputComponent:TCMOutputComponent(outputConf, inputCons, outputCons)";
}

std::string GenerateImpactDiagramHVL(const std::string& modelPath, const std::string& settings,
                                     const HVSimpleContainer& output)
{
    return outputLines(modelPath, settings, output) +
           "OutputComponent:TCMOutputComponent(outputConf,inputCons,outputCons)";
}

} // namespace

bool HVInteractiveTSR::getImpactDiagram(LocallyUniqueID dataset, const std::string& modelPath,
                                        const std::string& metricName,
                                        const std::vector<std::string>& dimFields,
                                        const std::vector<std::string>& dimValues, bool /*flag*/,
                                        int level, std::string& statJson)
{
    beginRequest();
    const HVSimpleContainer output("tcmStatJson", "");
    PreparationReplay data{dataset, modelPath, dimFields};
    RequestScope request(*this);
    std::vector<std::string> series = dimValues;
    series.push_back(metricName);
    const bool isDrawn = runOutputComponent(data, GetTargetsOutputSetting(series, level), output,
                                            {statJson, "getImpactDiagram"});
    request.end();
    return isDrawn;
}

bool HVInteractiveTSR::getModelStatistics(LocallyUniqueID dataset, const std::string& modelPath,
                                          const std::vector<std::string>& dimFields,
                                          const std::string& artifacts, std::string& statJson)
{
    beginRequest();
    const HVSimpleContainer output("tcmStatJson", "");
    PreparationReplay data{dataset, modelPath, dimFields};
    RequestScope request(*this);
    JNIJSONArray list(artifacts.c_str());
    if (!list.isGood()) {
        setException("The artifacts are not a JSON list.");
        return false;
    }
    const bool isDone =
        runOutputComponent(data, outputSettings(list), output, {statJson, "getModelStatistics"});
    request.end();
    return isDone;
}

bool HVInteractiveTSR::runOutputComponent(PreparationReplay& data, const std::string& settings,
                                          const HVSimpleContainer& output, const Answer& answer)
{
    std::string job;
    if (data.dataset == kNoDataset)
        job = GenerateImpactDiagramHVL(data.modelPath, settings, output);
    else if (fitSettings(data) && prepareData(data, data.settings.dateTimeField()))
        job = GenerateImpactDiagramHVL(data, settings, output);
    else
        return false;
    traceHVLFile(job, "HvlJobText", answer.operation);
    if (!runner().prepareHVLJob(job) || !tryRunHV(runner()))
        return false;
    ZipReader reader(output.getGenericPath());
    if (!readEntry(reader, "statJson.json", answer.statJson))
        return false;
    traceJSONFile(answer.statJson, "StatJSON", answer.operation);
    return true;
}
