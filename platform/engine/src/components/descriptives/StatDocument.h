#pragma once

#include <string>

#include "components/descriptives/FieldSummary.h"

namespace EmbeddedHV {

/// The text of "StatXML.xml", docs/descriptives.md: the data model of the fields, and the summaries
/// behind them inside of the model.
std::string statDocument(const DataSummary& summary);

} // namespace EmbeddedHV
