#pragma once

#include <functional>
#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// The fields of a part. With more, the statements on each field would spend most of their time on
/// the other columns of the table, and those on all fields in the database's planner.
inline constexpr std::size_t kFieldsOfPart = 100;

/// Calls `work` with parts of the summary, each with some of its fields and a table of only these.
/// `partName` is the name of
/// a temporary table that this function may create or replace. Throws JobError, and the exceptions
/// of `work`.
void forFieldParts(const ComponentQueries& queries, const InputTable& table,
                   const std::string& partName, DataSummary& summary,
                   const std::function<void(const InputTable& part, DataSummary& some)>& work);

/// Calls `work` for each of the sets of fields, in their order, with a table that has these fields.
/// A set is a list of positions in `fields`, and may have up to kFieldsOfPart of them. `partName`
/// is as above. Throws JobError, and the exceptions of `work`.
void forFieldSets(const ComponentQueries& queries, const InputTable& table,
                  const std::string& partName, const Fields& fields,
                  const std::vector<std::vector<std::size_t>>& sets,
                  const std::function<void(const InputTable& part, std::size_t set)>& work);

} // namespace EmbeddedHV
