#pragma once

#include <string_view>

#include "csv/CsvScanner.h"

namespace EmbeddedHV {

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
bool isSafeAs(CsvKind kind, const CsvField& field);

/// The kind of a column that holds both: an integer is a real too, a date a timestamp.
CsvKind widened(CsvKind left, CsvKind right);

} // namespace EmbeddedHV
