#pragma once

#include "Description.h"
#include "ResultTable.h"

/// The statistics of the fields of one group, a row each; a table for people tells how many
/// distinct values there are at least where the limit cut them.
enum class TableFor
{
    People,
    Programs
};
ResultTable statisticsTable(const Description& description, const GroupDescription& group,
                            TableFor reader);

/// The distinct values of the categorical fields of one group.
ResultTable valuesTable(const GroupDescription& group);
