#pragma once

#include <string>

#include "components/descriptives/model/FieldSummary.h"

namespace EmbeddedHV {

/// The text of "PMML.xml", see docs/descriptives.md: a PMML document with the data dictionary and
/// the statistics. PMML has statistics only inside a model. This document has no model, so an
/// extension holds them, in the elements of PMML.
std::string pmmlDocument(const DataSummary& summary);

} // namespace EmbeddedHV
