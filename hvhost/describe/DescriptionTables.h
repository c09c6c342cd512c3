#pragma once

#include "hvhost/describe/Description.h"
#include "hvhost/show/ResultTable.h"

/// The statistics of one group, with a row for each field.
ResultTable statisticsTable(const Description& description, const GroupDescription& group);
