#include <unicode/bytestream.h>
#include <unicode/casemap.h>

#include "CFUpperFuncImpl.h"

std::string GetUpperVarName(const std::string& name)
{
    std::string upper;
    icu::StringByteSink<std::string> sink(&upper);
    UErrorCode status = U_ZERO_ERROR;
    // Language-independent rules: a name is the same in all languages.
    icu::CaseMap::utf8ToUpper("", 0, icu::StringPiece(name), sink, nullptr, status);
    return U_SUCCESS(status) ? upper : name;
}
