#pragma once

#include <string>

#include "CommandFault.h"
#include "JobOrigin.h"

/// What helps with files that are not what they seem.
inline constexpr const char* kKindHint =
    "--from csv, sav, hvbf or parquet tells what it is, whatever its name says";
inline constexpr const char* kForeignTextHint =
    "--encoding NAME, as in windows-1252, tells what it is written in";

inline constexpr const char* kTemporaryHint = "TMPDIR names the folder of temporary files";

/// What the user never named.
inline constexpr const char* kTemporaryFile = "a temporary file";

/// A fault of a job as the engine reported it.
struct EngineFault
{
    std::string id;
    std::string text;
    std::string detail;
};

/// The fault in the user's words: the files by the names that the user gave them, places in a
/// generated text as places in the options that it came from, and what may be done about it.
CommandFault wordFault(const EngineFault& fault, const std::string& jobText,
                       const JobOrigin& origin);

/// "read: PATH: what", and the same of write, as "NAME: what", for a file that the user named.
std::string withFileName(const std::string& text, const JobOrigin& origin);
