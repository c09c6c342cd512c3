#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "values/Cell.h"

namespace scoring {

/// Memory that a function keeps between rows.
struct Scratch
{
    std::string text;
    std::vector<double> numbers;
};

/// The kinds of arguments that a function accepts.
enum class ArgumentRule
{
    Numbers,
    Booleans,
    Texts,       ///< numbers are converted to text
    Alike,       ///< all of the same kind
    Choice,      ///< a boolean, and one or two of the same kind
    Any,         ///< each may be of any kind
    TextPart,    ///< a text and two numbers
    SinceYear,   ///< a date or a moment, and a number
    MomentOrTime ///< one or the other
};

/// The kind of a function's result.
enum class ResultRule
{
    Number,
    Boolean,
    Text,
    Branch ///< the kind of the last argument
};

/// Whether a missing or invalid argument is passed on as the result, or the function handles it.
enum class MissingRule
{
    Passes,
    Seen
};

/// A built-in function.
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
    /// Replaces `apply` if the arguments are texts. Null: `apply` is used for texts too.
    Apply applyToTexts = nullptr;
};

/// Null if there is no function of this name.
const FunctionEntry* findFunction(std::string_view name);

/// The functions of one family.
std::span<const FunctionEntry> arithmeticFunctions();
std::span<const FunctionEntry> aggregateFunctions();
std::span<const FunctionEntry> logicFunctions();
std::span<const FunctionEntry> textFunctions();
std::span<const FunctionEntry> dateFunctions();

} // namespace scoring
