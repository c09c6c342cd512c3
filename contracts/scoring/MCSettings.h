#pragma once

#include <cstddef>

#include "ScoringExport.h"

/// Limits for the reader of a model. They prevent a hostile model from exhausting the stack or the
/// memory. A model that exceeds a limit is rejected.
class SCORING_API MCSettings
{
public:
    /// The default limits.
    MCSettings() = default;

    /// The largest depth of nested expressions, calls of the model's own functions included. The
    /// default is 100.
    int GetMaxDepth() const { return _maxDepth; }
    /// Sets the largest depth of nested expressions.
    void SetMaxDepth(int depth) { _maxDepth = depth; }
    /// The largest number of expressions. Each call of a function counts the expressions of that
    /// function again. The default is 200,000.
    std::size_t GetMaxExpressions() const { return _maxExpressions; }
    /// Sets the largest number of expressions.
    void SetMaxExpressions(std::size_t count) { _maxExpressions = count; }

private:
    int _maxDepth = 100;
    std::size_t _maxExpressions = 200000;
};
