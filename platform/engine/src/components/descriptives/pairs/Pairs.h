#pragma once

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/PairRule.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// Computes the pairs of the rule over the records that have a value in both fields. The statistics
/// and distinct values of the fields must be known. `partName` is the name of a temporary table
/// that this function may create or replace. Throws JobError, also if there are too many pairs.
void fillPairs(const ComponentQueries& queries, const InputTable& table,
               const std::string& partName, const PairRule& rule, DataSummary& summary);

} // namespace EmbeddedHV
