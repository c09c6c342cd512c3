#pragma once

#include <memory>
#include <string>

#include "UserCaseFile.h"
#include "datafile/ScratchFile.h"

/// The CSV file at `path`, of the form that `spec` tells, with commas between its fields and
/// periods in its numbers, in a file without a name; its lines stay where they are. Throws
/// ErrorText that begins with `name`, what the file is called.
std::shared_ptr<datafile::ScratchFile> plainCopy(const std::string& path, const std::string& name,
                                                 const UserCaseFileSpec& spec);
