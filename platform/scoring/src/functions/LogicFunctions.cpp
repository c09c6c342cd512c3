#include <algorithm>
#include <array>
#include <functional>

#include "functions/FunctionTable.h"

namespace scoring {
namespace {

using Arguments = std::span<const Cell>;

template <class Relation, bool areTexts>
Cell relate(Arguments arguments, Scratch&)
{
    return Cell::of(Relation{}(compare(arguments[0], arguments[1], areTexts), 0));
}

template <bool areTexts, bool wanted>
Cell isAmong(Arguments arguments, Scratch&)
{
    const Cell& sought = arguments[0];
    if (!sought.isPresent())
        return sought;
    const bool found =
        std::any_of(arguments.begin() + 1, arguments.end(), [&sought](const Cell& cell) {
            return cell.isPresent() && compare(sought, cell, areTexts) == 0;
        });
    return Cell::of(found == wanted);
}

/// The first argument with the decisive value decides. Otherwise the result is unknown if
/// an argument is unknown.
template <bool decisive>
Cell combine(Arguments arguments, Scratch&)
{
    Cell unknown = Cell::of(!decisive);
    for (const Cell& cell : arguments) {
        if (decisive ? cell.isTrue() : cell.isFalse())
            return Cell::of(decisive);
        // Invalid takes precedence over missing, in any order.
        if (cell.isInvalid() || (cell.isMissing() && !unknown.isInvalid()))
            unknown = cell;
    }
    return unknown;
}

Cell negate(Arguments arguments, Scratch&)
{
    return Cell::of(arguments[0].isFalse());
}

/// Without a third argument, the result is missing if the first is false.
Cell choose(Arguments arguments, Scratch&)
{
    if (!arguments[0].isPresent())
        return arguments[0];
    if (arguments[0].isTrue())
        return arguments[1];
    return arguments.size() > 2 ? arguments[2] : Cell::missing();
}

template <bool (Cell::*question)() const, bool wanted>
Cell ask(Arguments arguments, Scratch&)
{
    return Cell::of((arguments[0].*question)() == wanted);
}

constexpr FunctionEntry relation(std::string_view name, FunctionEntry::Apply apply,
                                 FunctionEntry::Apply applyToTexts)
{
    return {name,  2,           2, ArgumentRule::Alike, ResultRule::Boolean, MissingRule::Passes,
            apply, applyToTexts};
}

constexpr FunctionEntry membership(std::string_view name, FunctionEntry::Apply apply,
                                   FunctionEntry::Apply applyToTexts)
{
    return {name,
            2,
            FunctionEntry::kAnyNumber,
            ArgumentRule::Alike,
            ResultRule::Boolean,
            MissingRule::Seen,
            apply,
            applyToTexts};
}

constexpr FunctionEntry question(std::string_view name, FunctionEntry::Apply apply)
{
    return {name, 1, 1, ArgumentRule::Any, ResultRule::Boolean, MissingRule::Seen, apply, nullptr};
}

constexpr FunctionEntry combination(std::string_view name, FunctionEntry::Apply apply)
{
    return {name,
            2,
            FunctionEntry::kAnyNumber,
            ArgumentRule::Booleans,
            ResultRule::Boolean,
            MissingRule::Seen,
            apply,
            nullptr};
}

using Equal = std::equal_to<>;
using NotEqual = std::not_equal_to<>;
using Less = std::less<>;
using LessOrEqual = std::less_equal<>;
using Greater = std::greater<>;
using GreaterOrEqual = std::greater_equal<>;

constexpr std::array kLogic{
    relation("equal", relate<Equal, false>, relate<Equal, true>),
    relation("notEqual", relate<NotEqual, false>, relate<NotEqual, true>),
    relation("lessThan", relate<Less, false>, relate<Less, true>),
    relation("lessOrEqual", relate<LessOrEqual, false>, relate<LessOrEqual, true>),
    relation("greaterThan", relate<Greater, false>, relate<Greater, true>),
    relation("greaterOrEqual", relate<GreaterOrEqual, false>, relate<GreaterOrEqual, true>),
    membership("isIn", isAmong<false, true>, isAmong<true, true>),
    membership("isNotIn", isAmong<false, false>, isAmong<true, false>),
    combination("and", combine<false>),
    combination("or", combine<true>),
    FunctionEntry{"not", 1, 1, ArgumentRule::Booleans, ResultRule::Boolean, MissingRule::Passes,
                  negate, nullptr},
    FunctionEntry{"if", 2, 3, ArgumentRule::Choice, ResultRule::Branch, MissingRule::Seen, choose,
                  nullptr},
    question("isMissing", ask<&Cell::isMissing, true>),
    question("isNotMissing", ask<&Cell::isMissing, false>),
    question("isValid", ask<&Cell::isPresent, true>),
    question("isNotValid", ask<&Cell::isPresent, false>),
};

} // namespace

std::span<const FunctionEntry> logicFunctions()
{
    return kLogic;
}

} // namespace scoring
