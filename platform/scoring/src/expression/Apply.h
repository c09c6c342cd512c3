#pragma once

#include "expression/Treatment.h"
#include "functions/FunctionTable.h"

namespace scoring {

/// A call of a built-in function. The arguments have the kinds that it accepts.
class Apply : public Expression
{
public:
    Apply(const FunctionEntry& entry, bool toTexts, ValueKind kind, Expressions arguments,
          Treatment treatment);
    Cell evaluate(Cells& cells) override;

private:
    bool missesArgument() const;
    Cell result();

    const FunctionEntry& _entry;
    FunctionEntry::Apply _apply;
    Expressions _arguments;
    Treatment _treatment;
    std::vector<Cell> _values;
    Scratch _scratch;
};

} // namespace scoring
