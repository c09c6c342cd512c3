#pragma once

#include "MCStatus.h"
#include "ScoringExport.h"

class IMCVariable;
class MCVarList;
class ValueRecord;

/// A model that is ready to score. One thread at a time may use an object. Different objects may be
/// used on different threads at once.
class SCORING_API IMCScoreComputer
{
public:
    /// The model type of a transform model.
    static constexpr int kTransformModel = 16;

    /// Scores one row. `input` has one value for each input, in the order of GetInputs. The call
    /// sets one value in `output` for each output, in the order of PrepareOutput. An invalid
    /// number, for example a quotient by 0, is set to not-a-number. Returns an error if no output
    /// of the row is valid, or if the records do not fit the model; the content of `output` is then
    /// undefined. `reserved` is 0.
    virtual MCStatus Compute(const ValueRecord& input, ValueRecord& output, int reserved) = 0;
    /// Appends one value for each output to `output`, in order, with the output's name. The values
    /// are missing.
    virtual MCStatus PrepareOutput(ValueRecord& output) const = 0;
    /// Appends the inputs to `inputs`, in order. The model owns the variables.
    virtual MCStatus GetInputs(MCVarList& inputs) const = 0;
    /// The number of outputs.
    virtual int GetOutputCount() const = 0;
    /// The output at an index from 0, or null if the index is out of range. The model owns the
    /// variable.
    virtual const IMCVariable* GetOutputAt(int index) const = 0;
    /// The type of the model; kTransformModel if this library can score it.
    virtual int GetModelType() const = 0;
    /// The caller of MCScorerFactory::CreateMCScoringObject deletes the object.
    virtual ~IMCScoreComputer() = default;
};
