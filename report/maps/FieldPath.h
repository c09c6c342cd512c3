#pragma once

#include <string>
#include <string_view>

#include "report/document/PageDocument.h"

/// The value of a specification's field in a record: a member of exactly that name, or a nested
/// one, for example "properties.KEY" or "properties['the key']". Null if it is missing or a JSON
/// null.
const PageJson* valueAt(const PageJson& record, std::string_view field);

/// The last name in a field, which describes it.
std::string lastName(std::string_view field);
