#pragma once

#include "Description.h"
#include "ResultTable.h"

/// The statistics of one group, with a row for each field.
ResultTable statisticsTable(const Description& description, const GroupDescription& group);
