#pragma once

#include "MCStatus.h"
#include "ScoringExport.h"

class IMCVariable;
class MCVarList;
class ValueRecord;

/// A model that is ready to score. An object serves one thread; several objects, any number.
class SCORING_API IMCScoreComputer
{
public:
    /// The model type of a transform model.
    static constexpr int kTransformModel = 16;

    /// Scores one row: takes the values of the inputs, in their order, and sets those of the
    /// outputs. A number that is not valid, such as a quotient by 0, is set to not-a-number. An
    /// error says that no output of the row is valid; what `output` holds is then of no use. The
    /// last argument is 0.
    virtual MCStatus Compute(const ValueRecord& input, ValueRecord& output, int reserved) = 0;
    /// Adds a value for each output, in order.
    virtual MCStatus PrepareOutput(ValueRecord& output) const = 0;
    /// Adds the inputs, in order.
    virtual MCStatus GetInputs(MCVarList& inputs) const = 0;
    virtual int GetOutputCount() const = 0;
    /// Null where there is none; stays the model's.
    virtual const IMCVariable* GetOutputAt(int index) const = 0;
    virtual int GetModelType() const = 0;
    virtual ~IMCScoreComputer() = default;
};
