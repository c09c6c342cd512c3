#include "render/CellKey.h"

#include <array>

namespace {

constexpr std::uint64_t kBase = CellKey::kDigits.size();
static_assert(kBase == 86);
constexpr std::uint8_t kNoDigit = 255;

constexpr std::array<std::uint8_t, 256> makeDigitValues()
{
    std::array<std::uint8_t, 256> values{};
    values.fill(kNoDigit);
    for (std::size_t digit = 0; digit < kBase; ++digit)
        values[static_cast<unsigned char>(CellKey::kDigits[digit])] =
            static_cast<std::uint8_t>(digit);
    return values;
}

constexpr std::array<std::uint8_t, 256> kDigitValues = makeDigitValues();

/// Returns kNowhere on overflow.
std::uint64_t product(std::uint64_t left, std::uint64_t right)
{
    return right != 0 && left > CellKey::kNowhere / right ? CellKey::kNowhere : left * right;
}

} // namespace

namespace CellKey {

unsigned widthOf(std::uint64_t leaves)
{
    unsigned width = 1;
    for (std::uint64_t room = kBase; room < leaves; room = product(room, kBase))
        ++width;
    return width;
}

void write(std::uint64_t position, char* digits, unsigned width)
{
    for (unsigned place = width; place > 0; --place) {
        digits[place - 1] = kDigits[position % kBase];
        position /= kBase;
    }
}

std::string of(std::uint64_t position, unsigned width)
{
    std::string digits(width, kDigits.front());
    write(position, digits.data(), width);
    return digits;
}

std::uint64_t positionOf(std::string_view digits)
{
    std::uint64_t position = digits.empty() ? kNowhere : 0;
    for (const char digit : digits) {
        const std::uint8_t value = kDigitValues[static_cast<unsigned char>(digit)];
        // A damaged key may exceed 64 bits, which must not wrap to a valid position.
        if (value == kNoDigit || position > (kNowhere - value) / kBase)
            return kNowhere;
        position = position * kBase + value;
    }
    return position;
}

} // namespace CellKey

KeyLayout::KeyLayout(const std::vector<std::uint64_t>& leafCounts)
{
    for (const std::uint64_t leaves : leafCounts) {
        const unsigned width = CellKey::widthOf(leaves);
        _segments.push_back({leaves, width, _keyLength, 0});
        _keyLength += width;
    }
    std::uint64_t cells = _segments.empty() ? 0 : 1;
    for (auto segment = _segments.rbegin(); segment != _segments.rend(); ++segment) {
        segment->stride = cells;
        cells = product(cells, segment->leaves);
    }
    _cellCount = cells;
}

std::uint64_t KeyLayout::numberOf(std::string_view key) const
{
    if (_segments.empty() || key.size() != _keyLength || _cellCount == CellKey::kNowhere)
        return CellKey::kNowhere;
    std::uint64_t number = 0;
    for (const Segment& segment : _segments) {
        const std::uint64_t position =
            CellKey::positionOf(key.substr(segment.offset, segment.width));
        if (position >= segment.leaves)
            return CellKey::kNowhere;
        number += position * segment.stride;
    }
    return number;
}
