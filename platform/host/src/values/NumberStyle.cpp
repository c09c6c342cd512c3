#include "values/NumberStyle.h"

#include <string>

#include <unicode/dcfmtsym.h>

#include "CFAppHost.h"
#include "FormattedText.h"

namespace {

char readDecimalSign(const std::string& locale)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::DecimalFormatSymbols symbols(icu::Locale(locale.c_str()), status);
    const bool isComma =
        U_SUCCESS(status) &&
        symbols.getConstSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol) == u',';
    return isComma ? ',' : '.';
}

} // namespace

// Numbers are frequent and the locale rarely changes, so each thread caches the sign.
char decimalSign()
{
    thread_local const std::string* known = nullptr;
    thread_local char sign = '.';
    const std::string& locale = CFAppHost::getInstance()->getLocale();
    if (known != &locale) {
        sign = readDecimalSign(locale);
        known = &locale;
    }
    return sign;
}

bool isNumberFormat(const VEXA_Format& format)
{
    switch (format.type) {
    case kFormatComma:
    case kFormatDollar:
    case kFormatNumber:
    case kFormatPercent:
    case kFormatDot:
    case kFormatGeneral:
        return true;
    default:
        return false;
    }
}

NumberStyle numberStyle(const VEXA_Format& format)
{
    switch (format.type) {
    case kFormatComma:
        return {.decimalSign = '.', .groupSign = ','};
    case kFormatDollar:
        return {.decimalSign = '.', .groupSign = ',', .prefix = "$"};
    case kFormatDot:
        return {.decimalSign = ',', .groupSign = '.'};
    case kFormatNumber:
        return {.decimalSign = decimalSign()};
    case kFormatPercent:
        return {.decimalSign = decimalSign(), .suffix = "%"};
    default:
        return {.decimalSign = decimalSign(), .dropsZeros = true};
    }
}
