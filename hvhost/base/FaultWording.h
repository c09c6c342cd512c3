#pragma once

#include <string>

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/JobOrigin.h"

/// Hints for files with unexpected content.
inline constexpr const char* kKindHint =
    "--from csv, sav, hvbf or parquet sets its kind, whatever its name is";
inline constexpr const char* kForeignTextHint =
    "--encoding NAME, as in windows-1252, names its encoding";

inline constexpr const char* kJavaHint = "hvhost doctor shows what was found and what is missing";

inline constexpr const char* kTemporaryHint = "TMPDIR names the folder of temporary files";

/// A name for files that the user did not name.
inline constexpr const char* kTemporaryFile = "a temporary file";

/// An error of a job, as the engine reported it. The detail is a JSON object with the parts of the
/// error. Another engine may report a plain text.
struct EngineFault
{
    std::string id;
    std::string text;
    std::string detail;
};

/// Rewrites an error in the user's terms: with the user's names of files, with options instead of
/// positions in a generated text, and with a hint. An error without parts keeps its text.
CommandFault wordFault(const EngineFault& fault, const std::string& jobText,
                       const JobOrigin& origin);

/// Rewrites a message of a job in the user's terms, as wordFault does. `detail` has its parts as
/// JSON. A message without parts keeps its text.
std::string wordMessage(const std::string& text, const std::string& detail,
                        const JobOrigin& origin);

/// What messages with the same cause have in common: the id of the message, or its text if it has
/// no id.
std::string messageKind(const std::string& text, const std::string& detail);

/// A hint for an error of a file that is read, for commands that have the options for it; may be
/// empty. `kind` distinguishes errors of one id.
std::string inputHint(const std::string& id, const std::string& kind);

/// Whether the text of a job has a syntax error. The error may quote a password from the text.
bool isSyntaxFault(const EngineFault& fault);

/// The id, the text and the detail for a log.
std::string logText(const EngineFault& fault);
