#pragma once

#include <span>
#include <string_view>

namespace EmbeddedHV {

/// A function of the language in one of its forms. docs/hvl.md shows the same table to users.
struct Function
{
    std::string_view name;
    /// Types of the arguments, joined by ", ". Besides the words of types: "Number" is an Integer
    /// or a Real; "Any" is every type; arguments that are "Same" share one type; a "Pattern" is a
    /// string written out in the job. After the last word "..." lets it stand once or more.
    std::string_view parameters;
    /// The type of the result; "Same" is the type that the arguments share.
    std::string_view result;
    /// The SQL, with $1 to $9 for the arguments, $* for all of them, and $where for the beginning
    /// of an error message as a string. Each argument is an expression that needs no parentheses,
    /// and so is the result.
    std::string_view sql;
};

/// All forms of all functions; the forms of one function stand together, the narrower type first.
std::span<const Function> functionTable();

/// The forms of one function; empty if there is none of that name.
std::span<const Function> formsOf(std::string_view name);

bool isFunction(std::string_view name);

} // namespace EmbeddedHV
