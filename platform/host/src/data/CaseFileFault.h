#pragma once

#include "ErrorText.h"
#include "datafile/Duck.h"
#include "datafile/Fault.h"
#include "datafile/SealedFile.h"

/// Converts exceptions of the file library to those of the data library.
ErrorText errorTextOf(const datafile::Fault& fault);
ErrorText errorTextOf(const std::string& path, const datafile::SealedFileError& error);
/// `what` says what failed. It is used unless the message names the place itself, as a raised fault
/// or a CSV record does.
ErrorText errorTextOf(const std::string& path, const std::string& what,
                      const datafile::duck::QueryError& error);
