#include "datafile/Utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace datafile {
namespace {

constexpr std::uint64_t kHighBits = 0x8080808080808080U;

/// The number of ASCII bytes from `from` on, tested eight at a time, because most texts are pure
/// ASCII.
std::size_t asciiRun(std::string_view bytes, std::size_t from)
{
    std::size_t at = from;
    for (; at + sizeof(std::uint64_t) <= bytes.size(); at += sizeof(std::uint64_t)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + at, sizeof word);
        if (word & kHighBits)
            break;
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80)
        ++at;
    return at;
}

/// The length of a sequence by its lead byte; 0 for an invalid one.
std::size_t sequenceLength(unsigned char lead)
{
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    return lead >= 0xF0 && lead <= 0xF4 ? 4 : 0;
}

/// The second byte excludes overlong forms, surrogates and codes above U+10FFFF.
bool secondByteFits(unsigned char lead, unsigned char second)
{
    switch (lead) {
    case 0xE0:
        return second >= 0xA0;
    case 0xED:
        return second <= 0x9F;
    case 0xF0:
        return second >= 0x90;
    case 0xF4:
        return second <= 0x8F;
    default:
        return true;
    }
}

} // namespace

bool isUtf8(std::string_view bytes)
{
    std::size_t at = 0;
    while ((at = asciiRun(bytes, at)) < bytes.size()) {
        const auto lead = static_cast<unsigned char>(bytes[at]);
        const std::size_t length = sequenceLength(lead);
        if (length == 0 || at + length > bytes.size() ||
            !secondByteFits(lead, static_cast<unsigned char>(bytes[at + 1])))
            return false;
        for (std::size_t i = 1; i < length; ++i)
            if ((static_cast<unsigned char>(bytes[at + i]) & 0xC0U) != 0x80)
                return false;
        at += length;
    }
    return true;
}

} // namespace datafile
