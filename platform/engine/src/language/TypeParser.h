#pragma once

#include "language/TokenStream.h"

namespace EmbeddedHV::language {

/// Parses a declared type: `Real`, `[Real]`, `(Int, String)`, `{F: Real, "G 1": String}`.
Type parseType(TokenStream& tokens);

/// The name of a simple type in a job text.
const char* wordOf(SimpleType type);

/// A type as a job text declares it.
std::string textOf(const Type& type);

} // namespace EmbeddedHV::language
