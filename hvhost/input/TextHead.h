#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "hvhost/input/HeadRecords.h"

/// What the user says about a text file; a 0 means nothing is said.
struct GivenText
{
    char separator = '\0';
    char comment = '\0';
    std::uint64_t skipped = 0;     ///< lines
    std::optional<bool> hasHeader; ///< empty: the first record decides
};

/// Something that may be wrong in the reading of a text file, and the option that mends it.
struct TextDoubt
{
    std::string what;
    std::string remedy;
};

/// How a text file with separated fields is written, judged by its first lines. Only what is
/// unambiguous is found: if no dialect splits all these lines into the same number of fields, it is
/// that of a plain csv file, and the reader names the line that does not fit.
struct TextHead
{
    TextDialect dialect;
    std::uint64_t skipped = 0;      ///< lines above the names
    std::uint64_t blankLines = 0;   ///< after those, above the names
    bool hasHeader = true;          ///< whether the first record has the names
    bool hasOtherDates = false;     ///< dates and times that only TextImport knows
    std::vector<std::string> notes; ///< what was found, for a user who asks
    std::vector<TextDoubt> doubts;  ///< what may be wrong, for each user

    /// Whether a reader of plain csv files with this separator can read it.
    bool isPlain() const
    {
        return dialect.quote == '"' && dialect.escape == '"' && dialect.comment == '\0' &&
               skipped == 0 && !hasOtherDates;
    }
};

/// Judges a file. Ignores a file that cannot be read; its reader reports the reason.
TextHead textHead(const std::string& path, const GivenText& given);
