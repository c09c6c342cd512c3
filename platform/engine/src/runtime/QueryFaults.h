#pragma once

#include <string>

#include "JobError.h"

namespace EmbeddedHV {

/// The fault of a job behind the database's message about a statement. `steps` names the steps that
/// the statement stands for, `target` what it writes; the message goes to the detail.
JobError faultOf(const std::string& databaseMessage, const std::string& steps,
                 const std::string& target);

/// Whether the message is about a record of this CSV file, and about a value in one that does not
/// convert to its field's type.
bool isCsvFault(const std::string& databaseMessage, const std::string& path);
bool isCsvConversionFault(const std::string& databaseMessage, const std::string& path);
/// Whether the message is about the form of this CSV file or of one of its records, not about a
/// value.
bool isCsvFormFault(const std::string& databaseMessage, const std::string& path);

} // namespace EmbeddedHV
