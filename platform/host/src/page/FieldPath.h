#pragma once

#include <string>
#include <string_view>

#include "page/PageDocument.h"

/// What a field of a specification means in a record: a member of that very name, or one that lies
/// deeper, as in "properties.KEY" and "properties['the key']". Null if there is none; JSON's null
/// counts as none.
const PageJson* valueAt(const PageJson& record, std::string_view field);

/// The last name in a field, which says what it is about.
std::string lastName(std::string_view field);
