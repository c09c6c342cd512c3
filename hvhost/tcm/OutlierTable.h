#pragma once

#include "hvhost/show/ResultTable.h"
#include "hvhost/tcm/TcmOutput.h"

/// The text of a point of time in a document. The values of cyclic fields are joined by blanks.
std::string pointTextOf(const nlohmann::ordered_json& point);

/// A row for each outlier of the artifact "outliers".
ResultTable outlierTable(const nlohmann::ordered_json& outliers);
