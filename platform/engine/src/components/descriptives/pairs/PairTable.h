#pragma once

#include "components/descriptives/model/FieldSummary.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A table with a row for each pair, or for the strongest if there are many; null without pairs.
Json pairTable(const DataSummary& summary);

} // namespace EmbeddedHV
