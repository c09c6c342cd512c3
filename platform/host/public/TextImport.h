#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "CFField.h"
#include "HostExport.h"

/// How a file of records is written that is neither a plain CSV file nor one of the host's own.
struct TextImport
{
    /// What the text consists of.
    enum class Kind
    {
        Separated, ///< fields between separators, one record a line
        Json,      ///< an array of objects, or an object a line
        Sheet      ///< a sheet of an xlsx workbook
    };
    /// The kind of this file.
    Kind kind = Kind::Separated;
    /// Called while the file is converted to UTF-8; what it throws passes.
    std::function<void()> look = [] {};

    std::string sheet; ///< the name of a sheet, or its number from 1; empty: the first one

    // The rest is about separated fields only. A sheet has hasHeader, skippedLines, missing, types
    // and booleans as well; its lines are its rows.
    std::string codePage;             ///< the encoding; empty: UTF-8, or UTF-16 with its mark
    char separator = ',';             ///< between the fields of a line; '\0': found
    char quote = '"';                 ///< encloses texts
    char escape = '"';                ///< before a quote in quotes; the quote itself: it is doubled
    bool hasHeader = true;            ///< whether the first line has the names
    bool decimalComma = false;        ///< whether 1,5 is a number
    char thousands = '\0';            ///< groups digits: 1.234
    char comment = '\0';              ///< a line that begins with it is ignored
    std::uint64_t skippedLines = 0;   ///< before the names
    std::vector<std::string> missing; ///< texts that are missing values, like the empty one
    std::vector<std::pair<std::string, CFField::StorageType>> types; ///< of fields, by name
    std::vector<std::string> booleans; ///< fields with words such as true and no, by name
    std::string dateFormat; ///< of all dates, as for strptime; empty: found from the values
};

/// What a user should know about an imported text file.
struct TextImported
{
    std::vector<std::string> dayFirst;    ///< fields with dates that could be month first as well
    std::vector<std::string> yearUnclear; ///< fields that are texts, because their dates have years
                                          ///< of two digits
    std::uint64_t impossibleDates = 0; ///< numbers of a sheet that have a format of dates and are
                                       ///< no dates; they are missing
};

/// Converts a text file to a Parquet file at `target`. The database reads it. The type of a field
/// is the narrowest that holds all its values; true and false are texts, and so are nested values.
/// Each field has its own form of dates. If dates of a field can be read with the day first and
/// with the month first, the day is first. A time with a zone becomes that of UTC. In a field whose
/// given type is a number, signs of currencies and of percent are removed, and true and false are 1
/// and 0, if all its values become numbers by that. A field of booleans becomes 1 and
/// 0, with labels and the measure of a flag. Not interruptible except as `look` says. Throws
/// CaseFileError with the place in the file, and leaves no usable target then.
HOST_API TextImported ImportTextFile(const std::string& path, const TextImport& form,
                                     const std::string& target);

/// Whether a file is compressed by gzip or zstd.
HOST_API bool IsPackedFile(const std::string& path);

/// Unpacks such a file to `target`. `look` is called for each block; what it throws passes. Throws
/// CaseFileError for a damaged or cut file.
HOST_API void UnpackFile(const std::string& path, const std::function<void()>& look,
                         const std::string& target);
