#pragma once

#include "hvhost/show/ResultTable.h"
#include "hvhost/tcm/TcmOutput.h"

/// A point of time of a document as text: that of cyclic times is told field by field.
std::string pointTextOf(const nlohmann::ordered_json& point);

/// A row for each outlier of the artifact "outliers".
ResultTable outlierTable(const nlohmann::ordered_json& outliers);
