#include "expression/Apply.h"

#include <algorithm>
#include <utility>

namespace scoring {

Apply::Apply(const FunctionEntry& entry, bool toTexts, ValueKind kind, Expressions arguments,
             Treatment treatment)
    : Expression(kind), _entry(entry),
      _apply(toTexts && entry.applyToTexts ? entry.applyToTexts : entry.apply),
      _arguments(std::move(arguments)), _treatment(std::move(treatment)), _values(_arguments.size())
{
    _scratch.numbers.reserve(_arguments.size());
}

Cell Apply::evaluate(Cells& cells)
{
    for (std::size_t i = 0; i < _arguments.size(); ++i)
        _values[i] = _arguments[i]->evaluate(cells);
    if (_treatment.mapMissingTo && missesArgument())
        return _treatment.mapMissingTo->evaluate(cells);
    return _treatment.apply(result(), cells);
}

/// Of the branches of a choice, only the chosen one counts.
bool Apply::missesArgument() const
{
    if (_entry.result != ResultRule::Branch)
        return std::any_of(_values.begin(), _values.end(),
                           [](const Cell& cell) { return cell.isMissing(); });
    const std::size_t branch = _values[0].isTrue() ? 1 : 2;
    return _values[0].isMissing() ||
           (_values[0].isPresent() && branch < _values.size() && _values[branch].isMissing());
}

Cell Apply::result()
{
    if (_entry.missing == MissingRule::Passes) {
        const auto isInvalid = [](const Cell& cell) { return cell.isInvalid(); };
        if (std::any_of(_values.begin(), _values.end(), isInvalid))
            return Cell::invalid();
        if (missesArgument())
            return Cell::missing();
    }
    return _apply(_values, _scratch);
}

} // namespace scoring
