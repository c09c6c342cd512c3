#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace datafile {

/// Where the bytes stand that give a CSV text its form: commas, line ends and double quotes. Found
/// for a whole buffer at once, many bytes in one step, which is several times faster than to look
/// for the end of each field.
class CsvMarks
{
public:
    /// Finds the marks of `bytes` from `begin` up to `end`; those known before go.
    void find(const char* bytes, std::size_t begin, std::size_t end);

    std::size_t count() const { return _count; }
    /// The position of a mark in the bytes, in ascending order.
    std::size_t operator[](std::size_t mark) const { return _positions[mark]; }

private:
    std::vector<std::uint32_t> _positions; ///< only ever grows; the first `_count` hold
    std::size_t _count = 0;
};

} // namespace datafile
