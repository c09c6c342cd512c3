#pragma once

#include <cstddef>

#include "ScoringExport.h"

/// How a model is read. The limits keep a hostile model from using up the stack or the memory; a
/// model that goes beyond them is refused.
class SCORING_API MCSettings
{
public:
    MCSettings() = default;

    /// Expressions within each other, calls of the model's functions included; 100 by default.
    int GetMaxDepth() const { return _maxDepth; }
    void SetMaxDepth(int depth) { _maxDepth = depth; }
    /// Expressions of the model, once for each call of a function they are in; 200,000 by default.
    std::size_t GetMaxExpressions() const { return _maxExpressions; }
    void SetMaxExpressions(std::size_t count) { _maxExpressions = count; }

private:
    int _maxDepth = 100;
    std::size_t _maxExpressions = 200000;
};
