#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace datafile {

/// The positions of the bytes that structure a CSV text. They are searched in a whole buffer, many
/// bytes in one step. That is several times faster than searching the end of each field.
///
/// In a plain buffer each quote surrounds a whole field or is doubled within one, and no line end
/// is quoted. The marks of a plain buffer are the commas and line ends between fields. In other
/// buffers all commas, line ends and double quotes are marks.
class CsvMarks
{
public:
    /// Finds the marks of a buffer that begins between two records, and drops earlier ones.
    /// `isLast`: no bytes follow the buffer.
    void find(const char* bytes, std::size_t count, bool isLast);

    bool isPlain() const { return _isPlain; }
    bool hasQuotes() const { return _hasQuotes; }
    /// Whether a comma or a doubled quote is within quotes. Known of plain buffers only.
    bool hasQuotedMark() const { return _hasQuotedMark; }
    std::size_t count() const { return _count; }
    /// The position of the n-th mark, in ascending order.
    std::size_t operator[](std::size_t mark) const { return _positions[mark]; }

    /// The number of marks in a plain buffer that are bytes of line ends; 0 in others.
    std::size_t lineEndCount() const { return _lineEndCount; }
    /// The mark that is the n-th of them.
    std::size_t lineEnd(std::size_t n) const { return _lineEnds[n]; }

private:
    bool findPlain(const char* bytes, std::size_t count, bool isLast);
    void findAll(const char* bytes, std::size_t count);

    std::vector<std::uint32_t> _positions; ///< never shrinks; the first `_count` are valid
    std::vector<std::uint32_t> _lineEnds;  ///< never shrinks; the first `_lineEndCount` are valid
    std::size_t _count = 0;
    std::size_t _lineEndCount = 0;
    bool _isPlain = false;
    bool _hasQuotes = false;
    bool _hasQuotedMark = false;
};

} // namespace datafile
