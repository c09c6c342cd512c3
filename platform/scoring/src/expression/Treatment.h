#pragma once

#include "expression/Expression.h"

namespace scoring {

/// What becomes of a result that is missing or invalid. The constants may be null.
struct Treatment
{
    ExpressionPtr mapMissingTo; ///< the result where an argument is missing
    ExpressionPtr defaultValue; ///< in the place of a missing result
    bool invalidAsMissing = false;

    Cell settle(Cell result, Cells& cells) const
    {
        if (result.isInvalid() && invalidAsMissing)
            result = Cell::missing();
        return result.isMissing() && defaultValue ? defaultValue->evaluate(cells) : result;
    }
};

} // namespace scoring
