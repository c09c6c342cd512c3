#pragma once

#include <cstdint>

#include "components/ComponentQueries.h"
#include "components/descriptives/summary/InputTable.h"
#include "components/statistics/AssociationTests.h"

namespace EmbeddedHV {

/// A table of two fields, and the number of records in it.
struct CountedContingency
{
    Contingency table;
    std::int64_t records = 0;
    double weight = 0;
};

/// The weights of the records with a value of both fields. Rows and columns are the values that
/// occur, in ascending order. Throws JobError.
CountedContingency contingencyTable(const ComponentQueries& queries, const InputTable& table,
                                    const CFField& rows, const CFField& columns);

} // namespace EmbeddedHV
