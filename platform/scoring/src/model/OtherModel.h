#pragma once

#include "IMCScoreComputer.h"
#include "pmml/PmmlDocument.h"

namespace scoring {

/// A model of a kind that is known by name and not scored.
class OtherModel : public IMCScoreComputer
{
public:
    explicit OtherModel(int type) : _type(type) {}

    MCStatus Compute(const ValueRecord&, ValueRecord&, int) override { return unscored(); }
    MCStatus PrepareOutput(ValueRecord&) const override { return unscored(); }
    MCStatus GetInputs(MCVarList&) const override { return unscored(); }
    int GetOutputCount() const override { return 0; }
    const IMCVariable* GetOutputAt(int) const override { return nullptr; }
    int GetModelType() const override { return _type; }

private:
    static MCStatus unscored() { return MCStatus::Error("only transform models are scored"); }

    int _type;
};

/// The type code of the first model of a document; that of a transform model if there is none.
/// Throws ModelFault for an element that is neither a model nor anything else PMML has.
int modelTypeOf(const PmmlDocument& document);

} // namespace scoring
