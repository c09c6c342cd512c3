#pragma once

#include <string_view>

#include "VexaFormat.h"

/// Spelling of the numbers of a format.
struct NumberStyle
{
    char decimalSign = '.';
    char groupSign = 0; ///< between thousands; 0 for none
    std::string_view prefix = {};
    std::string_view suffix = {};
    bool dropsZeros = false; ///< at the end of the decimals
};

bool isNumberFormat(const VEXA_Format& format);
/// The style of a number format: its own signs, or those of the host's locale. Other formats have
/// the style of general numbers.
NumberStyle numberStyle(const VEXA_Format& format);
