#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace datafile {

/// Why a column is a text although its values have another meaning.
struct TextReason
{
    enum class Cause
    {
        OtherValue, ///< most of its values are numbers, dates or times
        Sign,       ///< all its texts are numbers with a sign of percent or of a currency
        Words       ///< all its values are true, false, yes and no
    };
    std::size_t column = 0;
    std::string name;
    std::string text;         ///< the first value that is a text
    std::uint64_t line = 0;   ///< the line on which its record begins, from 1; 0 if unknown
    std::uint64_t record = 0; ///< the number of its record, from 1
    Cause cause = Cause::OtherValue;
};

/// Reads a plain CSV file. Finds the reason of each column that has one. If `goOn`, which is asked
/// repeatedly, returns false, nothing is returned. Throws Fault.
std::vector<TextReason> textReasons(const std::string& path, bool hasHeader,
                                    const std::function<bool()>& goOn);

/// The same for the texts in a Parquet file, without lines. Throws QueryError.
std::vector<TextReason> textReasonsOfParquet(const std::string& path,
                                             const std::function<bool()>& goOn);

} // namespace datafile
