#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <unordered_map>

#include <pugixml.hpp>

#include "values/Cell.h"
#include "values/TimeScale.h"

namespace scoring {

/// The fields of the model, or the parameters of a function, that an expression can refer to by
/// name.
struct ScopeEntry
{
    std::size_t slot;
    ValueKind kind;
    std::optional<TimeScale> scale = std::nullopt;
};
using Scope = std::unordered_map<std::string, ScopeEntry>;

/// The functions that the model defines, by name.
using Definitions = std::unordered_map<std::string, pugi::xml_node>;

} // namespace scoring
