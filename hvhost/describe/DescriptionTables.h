#pragma once

#include "hvhost/describe/Description.h"
#include "hvhost/show/ResultTable.h"

/// The statistics of one group as texts, for CSV, with a row for each field. The columns have no
/// types.
ResultTable statisticsTable(const Description& description, const GroupDescription& group);
