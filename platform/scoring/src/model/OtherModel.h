#pragma once

#include "IMCScoreComputer.h"
#include "pmml/PmmlDocument.h"

namespace scoring {

/// A model of another kind. The library knows its type but cannot score it.
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

/// The type code of the first model in a document, or that of a transform model if the document has
/// no model. Throws ModelFault for an element that is not part of PMML.
int modelTypeOf(const PmmlDocument& document);

} // namespace scoring
