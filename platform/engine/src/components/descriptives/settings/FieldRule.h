#pragma once

#include <string>

#include "steps/Settings.h"

namespace EmbeddedHV {

/// The properties of fields that are found from the data.
struct FieldRule
{
    bool storage = false;
    bool measure = false;
    bool role = false;
    std::string target; ///< gets the role of a target; empty for none
};

/// Reads storageTypeHandling, measureHandling and fieldRoleHandling. Throws JobError.
FieldRule fieldRuleOf(const Settings& settings);

} // namespace EmbeddedHV
