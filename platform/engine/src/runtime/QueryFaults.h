#pragma once

#include <string>

#include "JobError.h"

namespace EmbeddedHV {

/// Converts the database's error message about a statement to an error of a job. `steps` names the
/// steps of the statement, `target` its output, which may be a file. The message becomes the
/// detail.
JobError faultOf(const std::string& databaseMessage, const std::string& steps,
                 const std::string& target, bool targetIsFile = false);

/// Whether the message is about a record of this CSV file.
bool isCsvFault(const std::string& databaseMessage, const std::string& path);
/// Whether the message is about a value of this CSV file that does not convert to the type of its
/// field.
bool isCsvConversionFault(const std::string& databaseMessage, const std::string& path);
/// Whether the message is about the format of this CSV file or of one of its records, not about a
/// value.
bool isCsvFormFault(const std::string& databaseMessage, const std::string& path);

} // namespace EmbeddedHV
