#include "model/TransformModel.h"

#include <limits>
#include <utility>

#include "MCMV.h"
#include "MCVarList.h"
#include "ValueRecord.h"

namespace scoring {

namespace {

constexpr const char* kNoValidValue = "no result of the row is valid";

double numberOf(const Cell& cell)
{
    if (cell.isInvalid())
        return std::numeric_limits<double>::quiet_NaN();
    return cell.isPresent() ? cell.number : MCMV::Missing();
}

} // namespace

TransformModel::TransformModel(std::vector<DataField> inputs, Expressions steps,
                               std::vector<Output> outputs, std::size_t slotCount)
    : _inputs(std::move(inputs)), _steps(std::move(steps)), _outputs(std::move(outputs)),
      _cells(slotCount)
{
}

/// Evaluates every derived field once and in order. So no field is computed twice, and the stack
/// stays flat.
void TransformModel::evaluate(const ValueRecord& input)
{
    for (std::size_t i = 0; i < _inputs.size(); ++i)
        _cells[i] = _inputs[i].read(input[static_cast<int>(i)]);
    for (std::size_t i = 0; i < _steps.size(); ++i)
        _cells[_inputs.size() + i] = _steps[i]->evaluate(_cells);
}

/// A row fails if none of its outputs is valid. The caller may want only some outputs, so one
/// invalid output must not invalidate the others.
MCStatus TransformModel::Compute(const ValueRecord& input, ValueRecord& output, int)
{
    if (input.Size() != static_cast<int>(_inputs.size()) || output.Size() != GetOutputCount())
        return MCStatus::Error("the records do not fit the model");
    evaluate(input);
    bool isValid = _outputs.empty();
    for (std::size_t i = 0; i < _outputs.size(); ++i) {
        const Cell& cell = _cells[_outputs[i].slot];
        isValid = isValid || !cell.isInvalid();
        Value& value = output[static_cast<int>(i)];
        if (_outputs[i].variable.isText()) {
            _text = cell.text;
            value = _text;
        } else {
            value = numberOf(cell);
        }
    }
    return isValid ? MCStatus() : MCStatus::Error(kNoValidValue);
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
