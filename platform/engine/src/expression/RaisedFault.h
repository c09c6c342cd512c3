#pragma once

#include <optional>
#include <string>

#include "JobError.h"

namespace EmbeddedHV {

/// Some values can only be found wrong while a query runs; the compiled SQL then raises an error of
/// the database, which has nothing but its text to say which fault of the job it is. This is the
/// beginning of that text: the id, and what the user reads.
std::string raisedText(const char* id, const std::string& text);

/// The job's fault that such an error stands for; of any other message nothing.
std::optional<JobError> raisedFault(const std::string& databaseMessage);

} // namespace EmbeddedHV
