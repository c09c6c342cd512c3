#include "datafile/CsvMarks.h"

#include <bit>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace datafile {
namespace {

/// Number of bytes per mask.
constexpr std::size_t kBlock = 64;

bool isMark(char character)
{
    return character == ',' || character == '\n' || character == '\r' || character == '"';
}

std::uint64_t maskOfFew(const char* bytes, std::size_t count)
{
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < count; ++i)
        mask |= std::uint64_t{isMark(bytes[i])} << i;
    return mask;
}

#if defined(__SSE2__)
/// One bit for each of the 64 bytes; the first byte is the lowest bit.
std::uint64_t maskOfBlock(const char* bytes)
{
    constexpr std::size_t kLane = sizeof(__m128i);
    std::uint64_t mask = 0;
    for (std::size_t at = 0; at < kBlock; at += kLane) {
        const __m128i lane = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + at));
        const auto equals = [&](char character) {
            return _mm_cmpeq_epi8(lane, _mm_set1_epi8(character));
        };
        const __m128i found = _mm_or_si128(_mm_or_si128(equals(','), equals('"')),
                                           _mm_or_si128(equals('\n'), equals('\r')));
        mask |= std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(found))} << at;
    }
    return mask;
}
#else
std::uint64_t maskOfBlock(const char* bytes)
{
    return maskOfFew(bytes, kBlock);
}
#endif

} // namespace

void CsvMarks::find(const char* bytes, std::size_t begin, std::size_t end)
{
    // In the worst case every byte is a mark.
    if (_positions.size() < end - begin)
        _positions.resize(end - begin);
    std::uint32_t* next = _positions.data();
    const auto keep = [&](std::uint64_t mask, std::size_t at) {
        for (; mask != 0; mask &= mask - 1)
            *next++ =
                static_cast<std::uint32_t>(at) + static_cast<std::uint32_t>(std::countr_zero(mask));
    };
    std::size_t at = begin;
    for (; end - at >= kBlock; at += kBlock)
        keep(maskOfBlock(bytes + at), at);
    keep(maskOfFew(bytes + at, end - at), at);
    _count = static_cast<std::size_t>(next - _positions.data());
}

} // namespace datafile
