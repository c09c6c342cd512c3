#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "CFField.h"
#include "HostExport.h"

/// How a text file of records is written, where it is not a plain CSV file.
struct TextImport
{
    /// What the text consists of.
    enum class Kind
    {
        Separated, ///< fields between separators, one record a line
        Json       ///< an array of objects, or an object a line
    };
    /// The kind of this file.
    Kind kind = Kind::Separated;
    /// Called while the file is converted to UTF-8; what it throws passes.
    std::function<void()> look = [] {};

    // The rest is about separated fields only.
    std::string codePage;             ///< the encoding; empty: UTF-8, or UTF-16 with its mark
    char separator = ',';             ///< between the fields of a line; '\0': found
    bool hasHeader = true;            ///< whether the first line has the names
    bool decimalComma = false;        ///< whether 1,5 is a number
    char thousands = '\0';            ///< groups digits: 1.234
    char comment = '\0';              ///< a line that begins with it is ignored
    std::uint64_t skippedLines = 0;   ///< before the names
    std::vector<std::string> missing; ///< texts that are missing values, like the empty one
    std::vector<std::pair<std::string, CFField::StorageType>> types; ///< of fields, by name
    std::string dateFormat; ///< of all dates, as for strptime; empty: found from the values
};

/// Converts a text file to a Parquet file at `target`. The database reads it; the file may be
/// compressed by gzip. The type of a field is the narrowest that holds all its values; true and
/// false are texts, and so are nested values. A time with a zone becomes that of UTC. Not
/// interruptible except as `look` says. Throws CaseFileError with the place in the file, and leaves
/// no usable target then.
HOST_API void ImportTextFile(const std::string& path, const TextImport& form,
                             const std::string& target);
