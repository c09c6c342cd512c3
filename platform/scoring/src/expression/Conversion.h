#pragma once

#include <utility>

#include "expression/Expression.h"

namespace scoring {

/// How a value becomes one of another kind.
enum class ConversionRule
{
    Same,    ///< the number stays
    ToWhole, ///< the nearest whole number, halves away from 0
    ToTruth, ///< 1 and 0; any other number is invalid
    ToDay,   ///< the day of a moment
    ToText,  ///< the shortest text of a number; true or false
    FromText ///< what the text says; invalid if it does not
};

/// A value as one of another kind.
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

/// A number that counts time, on another scale: whole days, or seconds.
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
