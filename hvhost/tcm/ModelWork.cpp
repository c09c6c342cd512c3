#include "hvhost/tcm/ModelWork.h"

#include "hvhost/input/Dataset.h"

namespace {

std::optional<InputFile> openedInput(const InputOptions& options, const InterruptWatch& watch)
{
    return options.path.empty()
               ? std::optional<InputFile>()
               : std::optional<InputFile>(std::in_place, options, FileOptions::Offered, watch);
}

} // namespace

ModelWork::ModelWork(const std::string& command, const std::string& model,
                     const InputOptions& input, const ShownOptions& shown,
                     const CommonOptions& common)
    : _watch(common.timeout), _shown(shown, _watch), _input(openedInput(input, _watch)),
      _session(command, model, common, _watch), _facts(_session.facts())
{
}

std::uint32_t ModelWork::dataset()
{
    if (!_input)
        return kNoDataset;
    if (!_known) {
        checkFields(_facts, *_input);
        _session.host().introduce(*_input);
        _known.emplace(*_input->dataset());
    }
    return _known->id();
}

void ModelWork::finish(const TcmResult& result)
{
    _shown.show(result, _session.host());
    if (_input)
        _input->finish();
    _session.host().finish();
}
