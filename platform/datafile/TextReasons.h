#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace datafile {

/// Why a column is a text although most of its values are numbers, dates or times.
struct TextReason
{
    std::size_t column = 0;
    std::string name;
    std::string text;       ///< the first value that is a text
    std::uint64_t line = 0; ///< the line on which its record begins, from 1
};

/// Reads a plain CSV file. In each column with more numbers, dates and times than texts, finds the
/// first text. If `goOn`, which is asked repeatedly, returns false, nothing is returned. Throws
/// Fault.
std::vector<TextReason> textReasons(const std::string& path, bool hasHeader,
                                    const std::function<bool()>& goOn);

} // namespace datafile
