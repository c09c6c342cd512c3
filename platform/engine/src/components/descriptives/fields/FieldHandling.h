#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/settings/FieldRule.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Changes the fields, and the columns whose storage changes. Fields with labels or declared
/// missing values keep their storage and measure. `partName` is the name of a temporary table that
/// this function may create or replace. Throws JobError.
void adaptFields(const ComponentQueries& queries, const InputTable& table,
                 const std::string& partName, const FieldRule& rule, Fields& fields);

} // namespace EmbeddedHV
