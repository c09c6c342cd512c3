#pragma once

#include <cstddef>
#include <string>

#include "CaseFileError.h"
#include "datafile/Duck.h"
#include "datafile/Fault.h"
#include "datafile/SealedFile.h"

/// Converts exceptions of the file library to those of the data library.
CaseFileError errorTextOf(const datafile::Fault& fault);
CaseFileError errorTextOf(const std::string& path, const datafile::SealedFileError& error);
/// `what` says what failed. It is used unless the message names the place itself, as a raised fault
/// or a CSV record does. `columns` is the number that the statement reads; if it is large, the text
/// gives it as the reason why memory is short.
CaseFileError errorTextOf(const std::string& path, const std::string& what,
                          const datafile::duck::QueryError& error, std::size_t columns = 0);

/// Throws CaseFileError with the reason in errno.
[[noreturn]] void failToRead(const std::string& path);
/// The same for a copy of the file; `form` is for example "in UTF-8".
[[noreturn]] void failToCopy(const std::string& path, const std::string& form);
