#pragma once

#include <memory>
#include <vector>

#include "IMCScoreComputer.h"
#include "expression/Expression.h"
#include "model/DataField.h"

namespace scoring {

/// A compiled transform model. The cells of a row are, in order: the inputs, the derived fields in
/// the order of their evaluation, the arguments of calls.
class TransformModel : public IMCScoreComputer
{
public:
    /// An output, and the slot that holds its value after a row is evaluated.
    struct Output
    {
        ModelVariable variable;
        std::size_t slot;
    };

    TransformModel(std::vector<DataField> inputs, Expressions steps, std::vector<Output> outputs,
                   std::size_t slotCount);

    MCStatus Compute(const ValueRecord& input, ValueRecord& output, int reserved) override;
    MCStatus PrepareOutput(ValueRecord& output) const override;
    MCStatus GetInputs(MCVarList& inputs) const override;
    int GetOutputCount() const override { return static_cast<int>(_outputs.size()); }
    const IMCVariable* GetOutputAt(int index) const override;
    int GetModelType() const override { return kTransformModel; }

private:
    void evaluate(const ValueRecord& input);

    std::vector<DataField> _inputs;
    Expressions _steps;
    std::vector<Output> _outputs;
    Cells _cells;
    std::string _text; ///< the text of an output while it is copied
};

} // namespace scoring
