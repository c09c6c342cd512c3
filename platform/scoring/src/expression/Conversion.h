#pragma once

#include <utility>

#include "expression/Expression.h"

namespace scoring {

/// How a value is converted to another kind.
enum class ConversionRule
{
    Same,    ///< the number is unchanged
    ToWhole, ///< the nearest whole number, halves away from 0
    ToTruth, ///< 1 and 0; other numbers are invalid
    ToDay,   ///< the day of a moment
    ToText,  ///< the shortest text of a number; "true" or "false"
    FromText ///< the value that the text represents; invalid if it represents none
};

/// Converts a value to another kind.
class Conversion : public Expression
{
public:
    Conversion(ExpressionPtr source, ValueKind kind, ConversionRule rule)
        : Expression(kind), _source(std::move(source)), _rule(rule)
    {
    }
    Cell evaluate(Cells& cells) override;

private:
    Cell text(double number);

    ExpressionPtr _source;
    ConversionRule _rule;
    std::string _text;
};

/// Converts a number that counts time to another scale. A scale in days gives whole days.
class Counting : public Expression
{
public:
    Counting(ExpressionPtr source, const TimeScale& from, const TimeScale& to)
        : Expression(ValueKind::Number), _source(std::move(source)), _from(from), _to(to)
    {
    }
    Cell evaluate(Cells& cells) override;

private:
    ExpressionPtr _source;
    TimeScale _from;
    TimeScale _to;
};

} // namespace scoring
