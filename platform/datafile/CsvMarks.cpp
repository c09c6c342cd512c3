#include "datafile/CsvMarks.h"

#include <bit>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace datafile {
namespace {

/// Number of bytes per mask.
constexpr std::size_t kBlock = 64;

/// One bit for each of 64 bytes; the first byte is the lowest bit.
struct BlockMasks
{
    std::uint64_t commas = 0;
    std::uint64_t lineEnds = 0;
    std::uint64_t quotes = 0;
};

BlockMasks masksOfFew(const char* bytes, std::size_t count)
{
    BlockMasks masks;
    for (std::size_t i = 0; i < count; ++i) {
        masks.commas |= std::uint64_t{bytes[i] == ','} << i;
        masks.lineEnds |= std::uint64_t{bytes[i] == '\n' || bytes[i] == '\r'} << i;
        masks.quotes |= std::uint64_t{bytes[i] == '"'} << i;
    }
    return masks;
}

#if defined(__SSE2__)
BlockMasks masksOfBlock(const char* bytes)
{
    constexpr std::size_t kLane = sizeof(__m128i);
    BlockMasks masks;
    for (std::size_t at = 0; at < kBlock; at += kLane) {
        const __m128i lane = _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes + at));
        const auto equals = [&](char character) {
            return _mm_cmpeq_epi8(lane, _mm_set1_epi8(character));
        };
        const auto bits = [&](__m128i found) {
            return std::uint64_t{static_cast<std::uint32_t>(_mm_movemask_epi8(found))} << at;
        };
        masks.commas |= bits(equals(','));
        masks.lineEnds |= bits(_mm_or_si128(equals('\n'), equals('\r')));
        masks.quotes |= bits(equals('"'));
    }
    return masks;
}
#else
BlockMasks masksOfBlock(const char* bytes)
{
    return masksOfFew(bytes, kBlock);
}
#endif

/// Calls take(masks, position, count) for each block of the bytes until it returns false. Returns
/// whether all were taken.
template <typename Take>
bool forEachBlock(const char* bytes, std::size_t count, const Take& take)
{
    std::size_t at = 0;
    for (; count - at >= kBlock; at += kBlock)
        if (!take(masksOfBlock(bytes + at), at, kBlock))
            return false;
    return at == count || take(masksOfFew(bytes + at, count - at), at, count - at);
}

/// Writes the positions of the bits, and returns the end of what it wrote.
std::uint32_t* writePositions(std::uint64_t bits, std::size_t at, std::uint32_t* next)
{
    for (; bits != 0; bits &= bits - 1)
        *next++ =
            static_cast<std::uint32_t>(at) + static_cast<std::uint32_t>(std::countr_zero(bits));
    return next;
}

/// Each bit is the parity of the bits up to it.
std::uint64_t parities(std::uint64_t bits)
{
    for (int shift = 1; shift < 64; shift *= 2)
        bits ^= bits << shift;
    return bits;
}

/// Follows the quotes of a buffer from block to block, and judges whether the buffer is plain.
class QuoteRule
{
public:
    /// Removes quoted commas from the masks. Returns false if the buffer is not plain.
    bool take(BlockMasks& masks, std::size_t count)
    {
        const std::uint64_t quoted = parities(masks.quotes) ^ (_isQuoted ? ~std::uint64_t{0} : 0);
        const std::uint64_t opening = masks.quotes & quoted;
        const std::uint64_t closing = masks.quotes & ~quoted;
        const bool hasQuotedLineEnd = (masks.lineEnds & quoted) != 0;
        // A quote that opens right after a closing one is the second of two.
        _quotedMarks |=
            (masks.commas & quoted) | (opening & ((closing << 1) | std::uint64_t{_mustEnd}));
        masks.commas &= ~quoted;
        // A quote opens a field, or continues it after a closing quote as the second of two. What
        // follows a closing quote is such a quote or the end of the field.
        const std::uint64_t ends = masks.commas | masks.lineEnds;
        const std::uint64_t mayOpen = ((ends | closing) << 1) | std::uint64_t{_mayOpen};
        const std::uint64_t mustEnd = ((closing << 1) | std::uint64_t{_mustEnd}) & lowest(count);
        if (hasQuotedLineEnd || (opening & ~mayOpen) != 0 || (mustEnd & ~(ends | opening)) != 0)
            return false;
        const std::uint64_t last = std::uint64_t{1} << (count - 1);
        _isQuoted = (quoted & last) != 0;
        _mayOpen = ((ends | closing) & last) != 0;
        _mustEnd = (closing & last) != 0;
        return true;
    }

    /// Whether the bytes so far end within quotes.
    bool isQuoted() const { return _isQuoted; }
    /// Whether a comma or a doubled quote was within quotes.
    bool hasQuotedMark() const { return _quotedMarks != 0; }

private:
    static std::uint64_t lowest(std::size_t count) { return ~std::uint64_t{0} >> (kBlock - count); }

    std::uint64_t _quotedMarks = 0; ///< of all blocks
    bool _isQuoted = false;
    bool _mayOpen = true;
    bool _mustEnd = false;
};

} // namespace

void CsvMarks::find(const char* bytes, std::size_t count, bool isLast)
{
    // In the worst case every byte is a mark.
    if (_positions.size() < count) {
        _positions.resize(count);
        _lineEnds.resize(count);
    }
    _isPlain = findPlain(bytes, count, isLast);
    if (!_isPlain)
        findAll(bytes, count);
}

/// Returns false if the buffer is not plain.
bool CsvMarks::findPlain(const char* bytes, std::size_t count, bool isLast)
{
    QuoteRule rule;
    std::uint32_t* next = _positions.data();
    std::uint32_t* nextLineEnd = _lineEnds.data();
    std::uint64_t quotes = 0;
    const bool isPlain =
        forEachBlock(bytes, count, [&](BlockMasks masks, std::size_t at, std::size_t size) {
            quotes |= masks.quotes;
            if (!rule.take(masks, size))
                return false;
            for (; masks.lineEnds != 0; masks.lineEnds &= masks.lineEnds - 1) {
                const std::uint64_t upToEnd = masks.lineEnds ^ (masks.lineEnds - 1);
                const std::uint64_t lineEnd = masks.lineEnds & upToEnd;
                next = writePositions((masks.commas & upToEnd) | lineEnd, at, next);
                *nextLineEnd++ = static_cast<std::uint32_t>(next - _positions.data() - 1);
                masks.commas &= ~upToEnd;
            }
            next = writePositions(masks.commas, at, next);
            return true;
        });
    _count = static_cast<std::size_t>(next - _positions.data());
    _lineEndCount = static_cast<std::size_t>(nextLineEnd - _lineEnds.data());
    _hasQuotedMark = rule.hasQuotedMark();
    _hasQuotes = quotes != 0; // a buffer without any is plain
    return isPlain && !(isLast && rule.isQuoted());
}

void CsvMarks::findAll(const char* bytes, std::size_t count)
{
    std::uint32_t* next = _positions.data();
    forEachBlock(bytes, count, [&](const BlockMasks& masks, std::size_t at, std::size_t) {
        next = writePositions(masks.commas | masks.lineEnds | masks.quotes, at, next);
        return true;
    });
    _count = static_cast<std::size_t>(next - _positions.data());
    _lineEndCount = 0;
}

} // namespace datafile
