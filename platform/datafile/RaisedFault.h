#pragma once

#include <optional>
#include <string>

#include "datafile/Fault.h"

namespace datafile {

/// Some values can only be found wrong while a query runs; its SQL then raises an error of the
/// database, which has nothing but its text to say which fault it is. This is the
/// beginning of that text: the id, and what the user reads.
std::string raisedText(const char* id, const std::string& text);

/// The fault that such an error stands for; of any other message nothing.
std::optional<Fault> raisedFault(const std::string& databaseMessage);

} // namespace datafile
