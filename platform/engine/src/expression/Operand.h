#pragma once

#include <optional>
#include <string>

#include "JobError.h"
#include "expression/ExpressionCompiler.h"

namespace EmbeddedHV {

/// A compiled operand or argument, and what messages and patterns need to know about its source.
struct Operand
{
    SqlExpression value;
    /// Its description in messages: "String", or "String (the field name)".
    std::string description;
    /// The text, if the operand is a string that the job writes out.
    std::optional<std::string> constant;
};

/// The position of an expression in a job, for error messages.
struct Place
{
    const std::string& step;
    language::Position position;

    /// Throws JobError; the text begins with the step and the position. `parts` has what the caller
    /// knows beyond these.
    [[noreturn]] void fail(const char* id, const std::string& text, FaultParts parts = {}) const;
};

} // namespace EmbeddedHV
