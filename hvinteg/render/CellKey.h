#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

/// How cells of a table are addressed: by one string, which states for each dimension in order the
/// position of a leaf, in digits to the base 86, the most significant first, in a fixed width.
namespace CellKey {

/// "*" is not among the digits: in a pattern it stands for all leaves.
inline constexpr std::string_view kDigits =
    "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ %&()+,-./:;<=>?@[]^_`|~";
inline constexpr char kAny = '*';
/// No position of any dimension.
inline constexpr std::uint64_t kNowhere = std::numeric_limits<std::uint64_t>::max();

/// How many digits the positions of that many leaves take; at least one.
unsigned widthOf(std::uint64_t leaves);
/// Writes a position over `width` characters of the key.
void write(std::uint64_t position, char* digits, unsigned width);
std::string of(std::uint64_t position, unsigned width);
/// The position that the digits state; kNowhere if there is something else among them, or nothing.
std::uint64_t positionOf(std::string_view digits);

} // namespace CellKey

/// The dimensions of a table, as its keys see them.
class KeyLayout
{
public:
    /// One dimension: how many leaves it has, where its digits stand in a key and how far its
    /// neighbouring leaves are from each other where cells are numbered, the last dimension first.
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
    /// The number of cells, as far as it goes into 64 bits; then no cell has a number.
    std::uint64_t cellCount() const { return _cellCount; }
    /// The number of the cell with that key; kNowhere if no leaves have it.
    std::uint64_t numberOf(std::string_view key) const;

private:
    std::vector<Segment> _segments;
    std::size_t _keyLength = 0;
    std::uint64_t _cellCount = 0;
};
