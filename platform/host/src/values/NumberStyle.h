#pragma once

#include <string_view>

#include "VexaFormat.h"

/// How the numbers of a format are spelt.
struct NumberStyle
{
    char decimalSign = '.';
    char groupSign = 0; ///< between thousands; 0 for none
    std::string_view prefix = {};
    std::string_view suffix = {};
    bool dropsZeros = false; ///< at the end of the decimals
};

bool isNumberFormat(const VEXA_Format& format);
/// The style of a number format: its own signs, or those of the host's locale. Every other format
/// counts as that of general numbers.
NumberStyle numberStyle(const VEXA_Format& format);
