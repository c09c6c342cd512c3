#pragma once

#include <vector>

#include "ScoringExport.h"

class IMCVariable;

/// Variables of a model, in order. They stay the model's.
class SCORING_API MCVarList
{
public:
    int Size() const { return static_cast<int>(_variables.size()); }
    /// Null where there is none.
    const IMCVariable* GetVarAt(int index) const;
    void Add(const IMCVariable* variable) { _variables.push_back(variable); }

private:
    std::vector<const IMCVariable*> _variables;
};
