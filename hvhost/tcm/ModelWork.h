#pragma once

#include <memory>
#include <optional>

#include "hvhost/base/InterruptWatch.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/KnownDataset.h"
#include "hvhost/tcm/TcmOutput.h"
#include "hvhost/tcm/TcmSession.h"

/// What a command on a model works with: the place for its result, its data and the model. They are
/// opened and checked in this order.
class ModelWork
{
public:
    /// An empty path of `input` means no data. Throws CommandFault for a result that cannot be
    /// written, and for data or a model that cannot be read.
    ModelWork(const std::string& command, const std::string& model, const InputOptions& input,
              const ShownOptions& shown, const CommonOptions& common);

    const InterruptWatch& watch() const { return _watch; }
    const TcmModelFacts& facts() const { return _facts; }
    TcmSession& session() { return _session; }
    /// Null for no data.
    const InputFile* data() const { return _input ? &*_input : nullptr; }
    /// The id of the data for the library; kNoDataset for no data. Throws CommandFault (Input) if
    /// the data lack a field of the model.
    std::uint32_t dataset();

    /// Shows the result and ends the work. Throws as TcmShown.
    void finish(const TcmResult& result);

private:
    InterruptWatch _watch;
    TcmShown _shown;
    std::optional<InputFile> _input;
    TcmSession _session;
    TcmModelFacts _facts;
    std::optional<KnownDataset> _known;
};
