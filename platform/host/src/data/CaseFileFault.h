#pragma once

#include "ErrorText.h"
#include "datafile/Duck.h"
#include "datafile/Fault.h"
#include "datafile/SealedFile.h"

/// What the file library throws, as what the data library throws.
ErrorText errorTextOf(const datafile::Fault& fault);
ErrorText errorTextOf(const std::string& path, const datafile::SealedFileError& error);
/// `what` says what could not be done, if the database does not know better: a fault that a query
/// raises, and one of a CSV record, name the place themselves.
ErrorText errorTextOf(const std::string& path, const std::string& what,
                      const datafile::duck::QueryError& error);
