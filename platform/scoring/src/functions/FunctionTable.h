#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "expression/Cell.h"

namespace scoring {

/// Memory that a function keeps between rows.
struct Scratch
{
    std::string text;
    std::vector<double> numbers;
};

/// What the arguments of a function must be.
enum class ArgumentRule
{
    Numbers,
    Booleans,
    Texts,       ///< numbers as well, by their text
    Alike,       ///< of one kind, whichever
    Choice,      ///< a boolean, and one or two that are alike
    Any,         ///< each of any kind
    TextPart,    ///< a text and two numbers
    SinceYear,   ///< a date or a moment, and a number
    MomentOrTime ///< one or the other
};

/// What a function gives.
enum class ResultRule
{
    Number,
    Boolean,
    Text,
    Branch ///< what the last argument is
};

/// Whether a missing or invalid argument is the result, or the function looks at it by itself.
enum class MissingRule
{
    Passes,
    Seen
};

/// A function that every model may use.
struct FunctionEntry
{
    using Apply = Cell (*)(std::span<const Cell> arguments, Scratch& scratch);

    static constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

    std::string_view name;
    std::size_t least;
    std::size_t most;
    ArgumentRule arguments;
    ResultRule result;
    MissingRule missing;
    Apply apply;
    /// In the place of `apply` where the arguments are texts; null for the same one.
    Apply applyToTexts = nullptr;
};

/// Null if there is none of this name.
const FunctionEntry* findFunction(std::string_view name);

/// The functions of one family.
std::span<const FunctionEntry> arithmeticFunctions();
std::span<const FunctionEntry> aggregateFunctions();
std::span<const FunctionEntry> logicFunctions();
std::span<const FunctionEntry> textFunctions();
std::span<const FunctionEntry> dateFunctions();

} // namespace scoring
