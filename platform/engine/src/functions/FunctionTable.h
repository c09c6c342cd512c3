#pragma once

#include <span>
#include <string_view>

namespace EmbeddedHV {

/// One form of a function. docs/hvl.md shows the same table to users.
struct Function
{
    std::string_view name;
    /// Types of the arguments, separated by ", ". Besides the names of types: "Number" is an
    /// Integer or a Real, "Any" is any type, all arguments that are "Same" share one type, and a
    /// "Pattern" is a string that the job writes out. If "..." follows the last word, that argument
    /// may be repeated.
    std::string_view parameters;
    /// The type of the result. "Same" is the type that the arguments share.
    std::string_view result;
    /// The SQL. $1 to $9 are the arguments, $* is all of them, and $where is the beginning of an
    /// error message, as a string. An argument needs no parentheses, and the result must need none.
    std::string_view sql;
};

/// All forms of all functions. The forms of a function are adjacent, narrower types first.
std::span<const Function> functionTable();

/// The forms of a function; empty if there is no function of this name.
std::span<const Function> formsOf(std::string_view name);

bool isFunction(std::string_view name);

} // namespace EmbeddedHV
