#pragma once

#include <string>

#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/InputTable.h"

namespace EmbeddedHV {

/// SQL for the distance of a number from about mean + `shift` s, divided by the standard deviation
/// s, if it is known. Sums of squares lose no digits if the records have their mean there.
std::string standardScore(const InputTable& table, const FieldSummary& field, double shift = 0);

} // namespace EmbeddedHV
