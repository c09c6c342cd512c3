#pragma once

#include <string>

#include "Obs.h"
#include "support/HvintegExport.h"

class VEXA_Variable;

/// Values to text and back. None of these depends on a locale: what they make goes into jobs and
/// file names, and what they read comes from there. Any thread.

/// The text of a case value, for a variable or for a width: 0 for a number, above 0 for a text of
/// that many bytes, which loses its trailing blanks. A number has up to 15 significant digits and a
/// period.
///
/// `value` points at as many units as the width takes. A null value, or a negative width, leaves
/// one NUL character in `out`, so that a caller can tell it from an empty text.
HVINTEG_EXPORT void ConvertObsValToStr(const OBS* value, const VEXA_Variable& variable,
                                       std::string& out);
HVINTEG_EXPORT void ConvertObsValToStr(const OBS* value, int width, std::string& out);

/// Six significant digits in the general format: 1234567.0 gives 1.23457e+06.
HVINTEG_EXPORT std::string Double2String(double value);
HVINTEG_EXPORT std::string Integer2String(int value);

/// The number at the start of a text, behind white space; what follows it is ignored. A text
/// without one gives 0, one that is out of range the nearest value.
HVINTEG_EXPORT double String2Double(const std::string& text);
HVINTEG_EXPORT int String2Integer(const std::string& text);
