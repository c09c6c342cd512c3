#pragma once

#include "Description.h"
#include "ResultTable.h"

/// The statistics of the fields of one group, a row each.
ResultTable statisticsTable(const Description& description, const GroupDescription& group);
