#pragma once

#include <string>

#include "components/descriptives/model/FieldSummary.h"

namespace EmbeddedHV {

/// The text of "StatXML.xml", see docs/descriptives.md: the data model of the fields, with the
/// summaries inside the model, after the fields.
std::string statDocument(const DataSummary& summary);

} // namespace EmbeddedHV
