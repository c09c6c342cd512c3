#pragma once

#include <optional>
#include <string>

#include "datafile/Fault.h"

namespace datafile {

/// Some invalid values are only found while a query runs. The SQL then raises a database error,
/// which carries only a text. This is the beginning of that text: the id and the parts on one line.
/// The SQL appends the rest of `parts.what`, for example the value, which may be any text.
std::string raisedText(const char* id, const FaultParts& parts);

/// Recovers the fault from such an error; nullopt for another message. The detail is the
/// database's message without the JSON.
std::optional<Fault> raisedFault(const std::string& databaseMessage);
/// The same from the text that the SQL raised. `prefix` begins the detail.
std::optional<Fault> faultRaisedAs(const std::string& raised, const std::string& prefix);

} // namespace datafile
