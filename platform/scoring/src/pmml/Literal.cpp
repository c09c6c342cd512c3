#include "pmml/Literal.h"

#include "pmml/ModelFault.h"
#include "values/CellText.h"

namespace scoring {

ExpressionPtr constantOf(const std::string& text, ValueKind kind, bool isTyped)
{
    const auto cell = parseCell(text, kind);
    if (!cell)
        throw ModelFault("\"" + text + "\" is not a value of the expected type");
    return std::make_unique<Constant>(kind, *cell, text, isTyped);
}

ExpressionPtr inferredConstant(const std::string& text)
{
    return constantOf(text, parseNumber(text) ? ValueKind::Number : ValueKind::Text, false);
}

ExpressionPtr missingConstant(ValueKind kind)
{
    return std::make_unique<Constant>(kind, Cell::missing(), std::string(), false);
}

} // namespace scoring
