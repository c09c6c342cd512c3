#pragma once

#include <optional>
#include <string>

#include "datafile/Fault.h"

namespace datafile {

/// A fault as a JSON object on one line, with its id, its parts and its detail. Parts that do not
/// apply are left out. Bytes that are not UTF-8 are replaced. docs/schemas/fault.schema.json
/// describes the object.
std::string jsonOf(const Fault& fault);

/// The parts of a message of a job, with its id, in the same form.
std::string jsonOf(const std::string& id, const FaultParts& parts);

/// Only the parts of a fault, in the same form.
std::string jsonOf(const FaultParts& parts);

/// The id, the parts and the detail of a reported fault.
struct FaultReport
{
    std::string id;
    FaultParts parts;
    std::string detail;
};

/// Reads what jsonOf wrote. Members with another type are ignored, and so are unknown members.
/// nullopt if the text is not a JSON object: another engine may report a plain text.
std::optional<FaultReport> faultReportIn(const std::string& text);

} // namespace datafile
