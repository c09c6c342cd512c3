#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "datafile/CsvValue.h"
#include "datafile/ScratchFile.h"

/// What is read from a workbook.
struct SheetRequest
{
    std::string sheet;                ///< see Workbook::sheetPart
    bool hasHeader = true;            ///< whether the first row with values has the names
    std::uint64_t skippedRows = 0;    ///< rows of the sheet that are ignored
    std::vector<std::string> missing; ///< texts that are missing values
    std::function<void()> look;       ///< called repeatedly; what it throws passes
};

/// The records of a sheet as CSV with commas and double quotes, without a line of names. A record
/// may have fewer fields than there are columns. Rows without values are not in it.
struct SheetCopy
{
    std::shared_ptr<datafile::ScratchFile> file;
    std::vector<std::string> names;       ///< of all columns; some may be empty
    std::vector<datafile::CsvKind> kinds; ///< the narrowest type of each column
    std::uint64_t impossibleDates = 0;    ///< cells that were left out, see SheetReader
};

/// Copies a sheet of the workbook at `path` to a file in `folder`. Memory holds one row and the
/// texts that the cells share. Throws WorkbookFault, and std::system_error if the copy cannot be
/// written.
SheetCopy copySheet(const std::string& path, const SheetRequest& request,
                    const std::string& folder);
