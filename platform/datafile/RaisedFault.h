#pragma once

#include <optional>
#include <string>

#include "datafile/Fault.h"

namespace datafile {

/// Some invalid values are only found while a query runs. The SQL then raises a database error,
/// which carries only a text. This is the beginning of that text: the id and the sentence for the
/// user.
std::string raisedText(const char* id, const std::string& text);

/// Recovers the fault from such an error; nullopt for another message.
std::optional<Fault> raisedFault(const std::string& databaseMessage);

} // namespace datafile
