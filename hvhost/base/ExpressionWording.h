#pragma once

#include <string>

#include "datafile/FaultParts.h"
#include "hvhost/base/JobOrigin.h"

/// The text of an error at a position in a generated job, with the option that has the expression.
/// An error after an expression, where the engine expected more of it, is reported as an error of
/// that expression.
std::string inExpression(const datafile::FaultParts& parts, const std::string& job,
                         const JobOrigin& origin);

/// A field of the record as expressions name it: x.wind, or x.`wind speed`.
std::string fieldText(const std::string& name);

/// A hint for an expression that other languages accept and this one does not: x.a = 1, x.a AND
/// x.b, x.a IS NULL, x.a <> 1, or a name with blanks. May be empty.
std::string foreignSyntaxHint(const std::string& expression);
