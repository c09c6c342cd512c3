#pragma once

#include <algorithm>
#include <string_view>

#include "CFField.h"
#include "datafile/CsvScanner.h"

namespace datafile {

/// The types that a CSV field can be read as without loss. Each type except Text is narrower than
/// the database's conversion, which rounds 1.5 to an integer and drops the time of a timestamp.
enum class CsvKind
{
    Missing, ///< no characters
    Integer, ///< no leading zeros, which are part of a code
    Real,
    Date,      ///< yyyy-MM-dd
    Time,      ///< HH:mm, seconds and up to six decimals
    Timestamp, ///< a date, a space or T, a time
    Text
};

CsvKind kindOf(const CsvField& field);

/// Whether the database, in a column of this type, reads the field unchanged or refuses it. Fast,
/// and false if uncertain.
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
    case CsvKind::Real: // not the leading zeros of a code
        return text.front() > '0' && text.front() <= '9';
    case CsvKind::Date: // not the time of a timestamp
        return text.size() == kDateLength;
    case CsvKind::Time:
    case CsvKind::Timestamp:
    case CsvKind::Text:
        return true;
    default:
        return false;
    }
}

/// The narrowest type that holds both: a real holds integers, a timestamp dates.
CsvKind widened(CsvKind left, CsvKind right);

/// The storage of a field whose values have the kind.
CFField::StorageType storageOfKind(CsvKind kind);

} // namespace datafile
