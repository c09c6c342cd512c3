#pragma once

#include "expression/Expression.h"

namespace scoring {

/// How missing and invalid results are treated. The constants may be null.
struct Treatment
{
    ExpressionPtr mapMissingTo; ///< the result if an argument is missing
    ExpressionPtr defaultValue; ///< replaces a missing result
    bool invalidAsMissing = false;

    Cell apply(Cell result, Cells& cells) const
    {
        if (result.isInvalid() && invalidAsMissing)
            result = Cell::missing();
        return result.isMissing() && defaultValue ? defaultValue->evaluate(cells) : result;
    }
};

} // namespace scoring
