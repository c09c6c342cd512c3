#include "text/Utf16.h"

#include <cstdint>
#include <limits>

#include <unicode/ustring.h>

namespace {

constexpr UChar32 kReplacement = 0xFFFD;
// Up to three bytes per unit must fit into ICU's lengths.
constexpr std::size_t kMaxUnits = std::numeric_limits<std::int32_t>::max() / 3;

} // namespace

bool utf8ToUtf16(std::string_view text, std::u16string& result)
{
    result.clear();
    if (text.empty())
        return true;
    if (text.size() > kMaxUnits)
        return false;
    // UTF-8 text has at most as many UTF-16 units as bytes.
    result.resize(text.size());
    std::int32_t length = 0;
    std::int32_t substitutions = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF8WithSub(result.data(), static_cast<std::int32_t>(result.size()), &length,
                         text.data(), static_cast<std::int32_t>(text.size()), kReplacement,
                         &substitutions, &error);
    result.resize(static_cast<std::size_t>(length));
    return substitutions == 0;
}

bool utf16ToUtf8(std::u16string_view text, std::string& result)
{
    result.clear();
    if (text.empty())
        return true;
    if (text.size() > kMaxUnits)
        return false;
    constexpr std::size_t kMaxBytesPerUnit = 3;
    result.resize(text.size() * kMaxBytesPerUnit);
    std::int32_t length = 0;
    std::int32_t substitutions = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strToUTF8WithSub(result.data(), static_cast<std::int32_t>(result.size()), &length,
                       text.data(), static_cast<std::int32_t>(text.size()), kReplacement,
                       &substitutions, &error);
    result.resize(static_cast<std::size_t>(length));
    return substitutions == 0;
}
