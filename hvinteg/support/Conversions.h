#pragma once

#include <string>

#include "Obs.h"
#include "support/HvintegExport.h"

class VEXA_Variable;

/// Conversions between values and texts. None of them depends on a locale, because the results go
/// into jobs and file names, and the inputs come from there. Any thread. They throw nothing of
/// their own.

/// Converts a case value to its text, by the type and width of a variable. A number has up to 15
/// significant digits and a period. A string loses its trailing blanks.
///
/// `value` is borrowed and points to as many units as the variable's width takes. If `value` is
/// null, `out` receives a single NUL character, which differs from an empty text.
HVINTEG_EXPORT void ConvertObsValToStr(const OBS* value, const VEXA_Variable& variable,
                                       std::string& out);
/// Converts a case value to its text, by a width in bytes: 0 is a number, above 0 a string. For a
/// negative width or a null `value`, `out` receives a single NUL character.
HVINTEG_EXPORT void ConvertObsValToStr(const OBS* value, int width, std::string& out);

/// Formats a number with six significant digits in the general format: 1234567.0 gives 1.23457e+06.
HVINTEG_EXPORT std::string Double2String(double value);
/// Formats an integer in decimal.
HVINTEG_EXPORT std::string Integer2String(int value);

/// Reads the number at the start of a text. Skips leading white space and ignores what follows the
/// number. Returns 0 if the text does not begin with a number, and the nearest representable value
/// if the number is out of range.
HVINTEG_EXPORT double String2Double(const std::string& text);
/// Reads the integer at the start of a text. Skips leading white space and ignores what follows the
/// integer. Returns 0 if the text does not begin with an integer, and the nearest representable
/// value if it is out of range.
HVINTEG_EXPORT int String2Integer(const std::string& text);
