#pragma once

#include <algorithm>
#include <string_view>

#include "datafile/CsvScanner.h"

namespace datafile {

/// What a CSV field can be read as without losing anything. Each kind but Text is narrower than the
/// database's own conversion, which rounds 1.5 to an integer and cuts the time off a timestamp.
enum class CsvKind
{
    Missing, ///< nothing between the commas
    Integer, ///< no leading zeros: those belong to a code, not to a number
    Real,
    Date,      ///< yyyy-MM-dd
    Time,      ///< HH:mm, seconds and up to six decimals
    Timestamp, ///< a date, a space or T, a time
    Text
};

CsvKind kindOf(const CsvField& field);

/// Whether the database reads the field in a column of this kind without changing it, or refuses
/// it. Cheap, and says no where it is not sure.
inline bool isSafeAs(CsvKind kind, const CsvField& field)
{
    const std::string_view text = field.text;
    if (text.empty())
        return !field.quoted;
    constexpr std::size_t kDateLength = 10;
    constexpr std::size_t kDigitsThatFit = 18;
    switch (kind) {
    case CsvKind::Integer:
        return text.front() > '0' && text.size() <= kDigitsThatFit &&
               std::all_of(text.begin(), text.end(),
                           [](char character) { return character >= '0' && character <= '9'; });
    case CsvKind::Real: // but for the leading zeros of a code
        return text.front() > '0' && text.front() <= '9';
    case CsvKind::Date: // but for the time of a timestamp
        return text.size() == kDateLength;
    case CsvKind::Time:
    case CsvKind::Timestamp:
    case CsvKind::Text:
        return true;
    default:
        return false;
    }
}

/// The kind of a column that holds both: an integer is a real too, a date a timestamp.
CsvKind widened(CsvKind left, CsvKind right);

} // namespace datafile
