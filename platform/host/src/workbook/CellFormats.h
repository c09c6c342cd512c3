#pragma once

#include <string>
#include <vector>

#include <string_view>

/// What a number format makes of a number.
enum class CellFormat
{
    Number,
    Date,
    Time,
    Timestamp
};

/// The meaning of a format code such as "dd.mm.yyyy hh:mm". Elapsed times such as [h]:mm are
/// numbers of days.
CellFormat formatOfCode(std::string_view code);

/// The formats of the cell styles of a workbook, in their order. `styles` is the part with the
/// styles; empty if the workbook has none. Throws WorkbookFault.
std::vector<CellFormat> cellFormats(const std::string& styles);
