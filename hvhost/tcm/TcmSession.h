#pragma once

#include <memory>
#include <string>

#include "hvhost/base/ReadableFile.h"
#include "hvhost/job/InteractiveSession.h"
#include "hvhost/tcm/TcmModelFacts.h"

class HVInteractiveTSR;
class InputFile;
class InterruptWatch;

/// A model that a command reads through the library's viewer.
class TcmSession
{
public:
    /// Throws CommandFault (Input) if the file is missing.
    TcmSession(const std::string& command, const std::string& model, const CommonOptions& options,
               const InterruptWatch& watch);
    ~TcmSession();
    TcmSession(const TcmSession&) = delete;
    TcmSession& operator=(const TcmSession&) = delete;

    HostSession& host() { return _session.host(); }
    const std::string& modelName() const { return _file.name(); }
    const std::string& modelPath() const { return _file.path(); }

    /// The description of the model. Throws CommandFault as perform.
    TcmModelFacts facts();
    /// Runs a request of the viewer. Throws CommandFault with the reason if the request fails.
    /// `data` is the file that the request reads, null for none.
    void perform(const std::function<bool(HVInteractiveTSR&)>& request, const InputFile* data);
    /// Artifacts of the model, JSON, on a dataset or without data. The result is the list
    /// "artifacts" of the answer, whose elements are in the order asked for.
    nlohmann::ordered_json artifacts(const TcmModelFacts& facts, const InputFile* data,
                                     std::uint32_t dataset, const nlohmann::ordered_json& asked);
    /// The same list in the answer to another request.
    nlohmann::ordered_json artifactsIn(const std::string& statJson) const;

private:
    ReadableFile _file;
    InteractiveSession _session;
    std::unique_ptr<HVInteractiveTSR> _viewer;
};

/// Throws CommandFault (Input) for data without a field of the model.
void checkFields(const TcmModelFacts& facts, const InputFile& data);
