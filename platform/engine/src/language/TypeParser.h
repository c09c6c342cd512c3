#pragma once

#include "language/TokenStream.h"

namespace EmbeddedHV::language {

/// Reads a declared type: `Real`, `[Real]`, `(Int, String)`, `{F: Real, "G 1": String}`.
Type parseType(TokenStream& tokens);

/// The word of a simple type in a job text.
const char* wordOf(SimpleType type);

/// A type in the form in which a job text declares it.
std::string textOf(const Type& type);

} // namespace EmbeddedHV::language
