#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

/// Keys of table cells. A key holds the position of a leaf for each dimension, in order. A position
/// is written in base 86, most significant digit first, with a fixed width.
namespace CellKey {

/// In a pattern, "*" matches all leaves. It is not a digit.
inline constexpr std::string_view kDigits =
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ %&()+,-./:;<=>?@[]^_`|~";
inline constexpr char kAny = '*';
/// An invalid position.
inline constexpr std::uint64_t kNowhere = std::numeric_limits<std::uint64_t>::max();

/// Number of digits for the positions of this many leaves; at least one.
unsigned widthOf(std::uint64_t leaves);
/// Writes a position to `width` characters of a key.
void write(std::uint64_t position, char* digits, unsigned width);
std::string of(std::uint64_t position, unsigned width);
/// Reads a position; kNowhere if the text is empty or has another character.
std::uint64_t positionOf(std::string_view digits);

} // namespace CellKey

/// The dimensions of a table, as its keys use them.
class KeyLayout
{
public:
    /// One dimension: count of leaves, place of its digits in a key, and distance of the numbers of
    /// neighbouring leaves' cells. The numbers run through the last dimension first.
    struct Segment
    {
        std::uint64_t leaves;
        unsigned width;
        std::size_t offset;
        std::uint64_t stride;
    };

    explicit KeyLayout(const std::vector<std::uint64_t>& leafCounts);

    const std::vector<Segment>& segments() const { return _segments; }
    std::size_t keyLength() const { return _keyLength; }
    /// The number of cells. kNowhere if it exceeds 64 bits; cells then have no numbers.
    std::uint64_t cellCount() const { return _cellCount; }
    /// The number of the cell with that key; kNowhere if the key is invalid.
    std::uint64_t numberOf(std::string_view key) const;

private:
    std::vector<Segment> _segments;
    std::size_t _keyLength = 0;
    std::uint64_t _cellCount = 0;
};
