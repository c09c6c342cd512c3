#pragma once

#include <utility>

#include "expression/Treatment.h"

namespace scoring {

/// A call of a function of the model. The body refers to the arguments by their slots.
class Call : public Expression
{
public:
    Call(std::size_t firstSlot, Expressions arguments, ExpressionPtr body, Treatment treatment)
        : Expression(body->kind()), _firstSlot(firstSlot), _arguments(std::move(arguments)),
          _body(std::move(body)), _treatment(std::move(treatment))
    {
    }

    Cell evaluate(Cells& cells) override
    {
        bool missesArgument = false;
        for (std::size_t i = 0; i < _arguments.size(); ++i) {
            const Cell argument = _arguments[i]->evaluate(cells);
            missesArgument = missesArgument || argument.isMissing();
            cells[_firstSlot + i] = argument;
        }
        if (missesArgument && _treatment.mapMissingTo)
            return _treatment.mapMissingTo->evaluate(cells);
        return _treatment.apply(_body->evaluate(cells), cells);
    }

private:
    std::size_t _firstSlot;
    Expressions _arguments;
    ExpressionPtr _body;
    Treatment _treatment;
};

} // namespace scoring
