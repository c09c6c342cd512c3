#include "hvhost/tcm/TcmSession.h"

#include "hvhost/base/CommandFault.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "support/Transcoding.h"
#include "tcm/HVInteractiveTSR.h"

TcmSession::TcmSession(const std::string& command, const std::string& model,
                       const CommonOptions& options, const InterruptWatch& watch)
    : _file(model, watch), _session("tcm " + command, options, watch),
      _viewer(std::make_unique<HVInteractiveTSR>())
{
}

TcmSession::~TcmSession() = default;

TcmModelFacts TcmSession::facts()
{
    std::string fullModel;
    std::string inputModel;
    std::string outputModel;
    std::string properties;
    std::string network;
    std::string preparation;
    try {
        perform(
            [&](HVInteractiveTSR& viewer) {
                return viewer.getModelCapabilities(modelPath(), fullModel, inputModel, outputModel,
                                                   properties, network, preparation);
            },
            nullptr);
    } catch (const CommandFault& fault) {
        // Only the model was read, so the fault is in the model.
        if (fault.status() != ExitStatus::JobFailed)
            throw;
        throw CommandFault(ExitStatus::Input, fault.what(), fault.hint(), fault.detail());
    }
    return readModelFacts(modelName(), network, preparation);
}

/// The engine names the model by its path.
void TcmSession::perform(const std::function<bool(HVInteractiveTSR&)>& request,
                         const InputFile* data)
{
    JobOrigin origin;
    if (data != nullptr)
        origin = data->origin();
    origin.inputs.push_back({modelPath(), modelName()});
    _session.perform(
        *_viewer, [&] { return request(*_viewer); }, modelName(), origin);
}

nlohmann::ordered_json TcmSession::artifacts(const TcmModelFacts& facts, const InputFile* data,
                                             std::uint32_t dataset,
                                             const nlohmann::ordered_json& asked)
{
    std::string answer;
    perform(
        [&](HVInteractiveTSR& viewer) {
            return viewer.getModelStatistics(dataset, modelPath(), facts.dimensions, asked.dump(),
                                             answer);
        },
        data);
    return artifactsIn(answer);
}

nlohmann::ordered_json TcmSession::artifactsIn(const std::string& statJson) const
{
    const auto document = nlohmann::ordered_json::parse(statJson, nullptr, false);
    if (!document.is_object() || !document.contains("artifacts") ||
        !document["artifacts"].is_array())
        throw CommandFault(ExitStatus::JobFailed,
                           modelName() + ": the engine's description of the model is invalid");
    return document["artifacts"];
}

void checkFields(const TcmModelFacts& facts, const InputFile& data)
{
    std::vector<std::string> names = facts.dimensions;
    names.insert(names.end(), facts.metrics.begin(), facts.metrics.end());
    for (const std::string& field : facts.timeFields)
        if (field != "$casecount")
            names.push_back(field);
    const VEXA_DataSource& source = data.dataset()->source();
    for (const std::string& name : names)
        if (source.FindVarIndex(transcodeFromUTF8(name.c_str(), nullptr), 0) < 0)
            throw CommandFault(ExitStatus::Input, data.origin().inputs.front().name +
                                                      ": there is no variable \"" + name +
                                                      "\", which " + facts.file + " needs");
}
