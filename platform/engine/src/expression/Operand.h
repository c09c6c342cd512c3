#pragma once

#include <optional>
#include <string>

#include "expression/ExpressionCompiler.h"

namespace EmbeddedHV {

/// A compiled operand or argument, with what messages and patterns need to know of its source.
struct Operand
{
    SqlExpression value;
    /// How a message calls it: "String", or "String (the field name)".
    std::string description;
    /// The text, if the job writes a string out here.
    std::optional<std::string> constant;
};

/// Where in a job an expression stands, and the errors that say so.
struct Place
{
    const std::string& step;
    language::Position position;

    /// Throws JobError; the text begins with the step and the position.
    [[noreturn]] void fail(const char* id, const std::string& text) const;
};

} // namespace EmbeddedHV
