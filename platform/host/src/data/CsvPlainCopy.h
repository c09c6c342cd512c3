#pragma once

#include <memory>
#include <string>

#include "UserCaseFile.h"
#include "datafile/ScratchFile.h"

/// Copies the CSV file at `path`, in the form of `spec`, to a file without a name that has commas
/// between fields and periods in numbers. Line numbers are unchanged. Throws CaseFileError
/// about `name`, the file's name for users.
std::shared_ptr<datafile::ScratchFile> plainCopy(const std::string& path, const std::string& name,
                                                 const UserCaseFileSpec& spec);
