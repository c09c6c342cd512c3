#include "model/TransformModel.h"

#include <utility>

#include "MCMV.h"
#include "MCVarList.h"
#include "ValueRecord.h"

namespace scoring {

TransformModel::TransformModel(std::vector<DataField> inputs, Expressions steps,
                               std::vector<Output> outputs, std::size_t slotCount)
    : _inputs(std::move(inputs)), _steps(std::move(steps)), _outputs(std::move(outputs)),
      _cells(slotCount)
{
}

/// Every derived field once and in order, so that none is computed twice and the stack stays flat.
void TransformModel::evaluate(const ValueRecord& input)
{
    for (std::size_t i = 0; i < _inputs.size(); ++i)
        _cells[i] = _inputs[i].read(input[static_cast<int>(i)]);
    for (std::size_t i = 0; i < _steps.size(); ++i)
        _cells[_inputs.size() + i] = _steps[i]->evaluate(_cells);
}

/// One output that has no value makes the row fail: half a row would be taken for a whole one.
MCStatus TransformModel::Compute(const ValueRecord& input, ValueRecord& output, int)
{
    if (input.Size() != static_cast<int>(_inputs.size()) || output.Size() != GetOutputCount())
        return MCStatus::Error("the records do not fit the model");
    evaluate(input);
    for (std::size_t i = 0; i < _outputs.size(); ++i) {
        const ModelVariable& variable = _outputs[i].variable;
        const Cell& cell = _cells[_outputs[i].slot];
        if (cell.isInvalid())
            return MCStatus::Error("the row has no valid value for \"" + variable.name() + "\"");
        Value& value = output[static_cast<int>(i)];
        if (variable.isText()) {
            _text = cell.text;
            value = _text;
        } else {
            value = cell.isPresent() ? cell.number : MCMV::Missing();
        }
    }
    return {};
}

MCStatus TransformModel::PrepareOutput(ValueRecord& output) const
{
    for (const Output& each : _outputs)
        output.AddValue(each.variable.name(),
                        each.variable.isText() ? Value("") : Value(MCMV::Missing()));
    return {};
}

MCStatus TransformModel::GetInputs(MCVarList& inputs) const
{
    for (const DataField& input : _inputs)
        inputs.Add(&input.variable());
    return {};
}

const IMCVariable* TransformModel::GetOutputAt(int index) const
{
    return index >= 0 && index < GetOutputCount()
               ? &_outputs[static_cast<std::size_t>(index)].variable
               : nullptr;
}

} // namespace scoring
