#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "datafile/CsvScanner.h"

/// The characters with a meaning in a text file with separated fields.
struct TextDialect
{
    char separator = ',';
    char quote = '"';
    char escape = '"';   ///< before a quote in quotes; the quote itself: it is doubled
    char comment = '\0'; ///< a line that begins with it is ignored
};

/// The first records of a text file, split by a dialect. The fields are views into the text.
struct HeadRecords
{
    using Record = std::vector<datafile::CsvField>;
    std::vector<Record> records;
    bool isSound = true; ///< each quote is closed, and a separator or a line end follows it

    /// Whether all records have the same number of fields, at least two.
    bool isRegular() const;
    /// Whether a value below the first record is between quotes.
    bool quotesValues() const;
};

/// Splits up to `most` records. A last record that the end of the text may have cut is left out,
/// unless it is the only one: set `isWhole` if nothing was cut.
HeadRecords headRecords(std::string_view text, const TextDialect& dialect, std::size_t most,
                        bool isWhole);
