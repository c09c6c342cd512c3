#pragma once

#include <optional>
#include <string>

#include "datafile/CsvValue.h"
#include "workbook/CellFormats.h"

/// A value of a cell as a text of a CSV file, and its type.
struct CellValue
{
    std::string text;
    datafile::CsvKind kind = datafile::CsvKind::Missing;
};

/// A number of days as a date, a time or both, to the millisecond. Day 1 is 1 January 1900, or day
/// 0 is 1 January 1904. A number with a fraction is a timestamp also if its format shows only the
/// date. Returns nullopt for a number that is not a date: below the first day, after the year 9999,
/// and 60, which workbooks with the year 1900 have for a 29 February that did not exist.
std::optional<CellValue> serialDate(double days, CellFormat format, bool is1904);
