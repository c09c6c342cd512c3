#include "hvhost/score/ScoringModel.h"

#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>

#include "CFMetaData.h"
#include "IMCScoreComputer.h"
#include "IMCVariable.h"
#include "MCScorerFactory.h"
#include "MCSettings.h"
#include "MCVarList.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/input/NameLookup.h"

namespace {

ScoringModel::Variable variableOf(const IMCVariable& variable)
{
    ScoringModel::Variable known;
    variable.GetName(known.name);
    known.storage = static_cast<CFField::StorageType>(variable.GetStorage());
    return known;
}

/// Integer and Real count as the same.
bool isSameStorage(CFField::StorageType one, CFField::StorageType other)
{
    const auto general = [](CFField::StorageType storage) {
        return storage == CFField::Integer ? CFField::Real : storage;
    };
    return general(one) == general(other);
}

std::string wordFor(CFField::StorageType storage)
{
    const char* const word = WordOf(storage);
    return word == nullptr ? "value of another kind" : word;
}

} // namespace

ScoringModel::ScoringModel(const ReadableFile& file) : _name(file.name())
{
    std::ifstream stream(file.path(), std::ios::binary);
    _text.assign(std::istreambuf_iterator<char>(stream), {});
    read();
}

void ScoringModel::read()
{
    MCScorerFactory factory;
    MCSettings settings;
    std::istringstream stream(_text);
    const std::unique_ptr<IMCScoreComputer> model(factory.CreateMCScoringObject(settings, stream));
    if (!model)
        throw CommandFault(ExitStatus::Input, _name + ": " + factory.GetStatus().GetMessage());
    if (model->GetModelType() != IMCScoreComputer::kTransformModel)
        throw CommandFault(ExitStatus::Input, _name + ": this is a model of another kind",
                           "a transform model has derived fields and nothing to predict");
    MCVarList inputs;
    model->GetInputs(inputs);
    for (int i = 0; i < inputs.Size(); ++i)
        _inputs.push_back(variableOf(*inputs.GetVarAt(i)));
    for (int i = 0; i < model->GetOutputCount(); ++i) {
        _outputs.push_back(variableOf(*model->GetOutputAt(i)));
        if (_outputs.back().storage == CFField::String)
            throw CommandFault(ExitStatus::Input,
                               _name + ": the result \"" + _outputs.back().name + "\" is a text",
                               "only numbers, dates and times are scored");
    }
}

std::vector<ScoringModel::Variable>
ScoringModel::targets(const std::vector<std::string>& names) const
{
    if (names.empty())
        return _outputs;
    std::vector<Variable> targets;
    targets.reserve(names.size());
    std::vector<std::string> known;
    known.reserve(_outputs.size());
    for (const Variable& output : _outputs)
        known.push_back(output.name);
    for (const std::string& name : names)
        targets.push_back(_outputs[placeOfName(
            name, known,
            {"--target " + name, "result", "without --target, all results are written"})]);
    return targets;
}

void ScoringModel::checkInputs(const CFMetaData& data, const std::string& dataName) const
{
    for (const Variable& input : _inputs) {
        const CFField* const field = data.GetField(input.name);
        if (field == nullptr)
            throw CommandFault(ExitStatus::Input,
                               dataName + ": there is no variable \"" + input.name + "\", which " +
                                   _name + " needs",
                               "--derive 'NAME=EXPRESSION' makes one");
        if (!isSameStorage(field->GetStorage(), input.storage))
            throw CommandFault(ExitStatus::Input, dataName + ": \"" + input.name + "\" is a " +
                                                      wordFor(field->GetStorage()) + ", and " +
                                                      _name + " needs a " + wordFor(input.storage));
    }
}
