#pragma once

#include <optional>
#include <string>

#include "components/ComponentQueries.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// The storage of a text field's values.
struct FoundStorage
{
    CFField::StorageType storage = CFField::String;
    std::string conversion; ///< SQL for the column with this storage, under its name
};

/// The first of integers, reals and dates whose form all values of a text field have; blanks around
/// them are ignored. An integer has up to 18 digits and no leading zeros, which a code may have; a
/// date is YYYY-MM-DD. Empty if there is no such storage, or no value. Throws JobError.
std::optional<FoundStorage> foundStorage(const ComponentQueries& queries, const InputTable& table,
                                         const CFField& field);

} // namespace EmbeddedHV
