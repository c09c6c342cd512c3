#pragma once

#include <functional>
#include <memory>
#include <string>

#include "datafile/ScratchFile.h"
#include "text/CodePage.h"

/// Opens a code page for a data file. Throws CaseFileError for an unknown name.
std::shared_ptr<CodePage> codePageOfFile(const std::string& name);

/// Copies a text file to UTF-8, in a file without a name that is positioned at its start. `look` is
/// called for each block; what it throws passes. Throws CaseFileError, with the line of bytes that
/// the code page does not have.
std::shared_ptr<datafile::ScratchFile> utf8Copy(const std::string& path, const CodePage& page,
                                                const std::function<void()>& look);
