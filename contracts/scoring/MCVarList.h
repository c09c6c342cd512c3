#pragma once

#include <vector>

#include "ScoringExport.h"

class IMCVariable;

/// A list of variables of a model, in order. The model owns the variables.
class SCORING_API MCVarList
{
public:
    /// The number of variables.
    int Size() const { return static_cast<int>(_variables.size()); }
    /// The variable at an index from 0, or null if the index is out of range.
    const IMCVariable* GetVarAt(int index) const;
    /// Appends a variable. The list does not take ownership.
    void Add(const IMCVariable* variable) { _variables.push_back(variable); }

private:
    std::vector<const IMCVariable*> _variables;
};
