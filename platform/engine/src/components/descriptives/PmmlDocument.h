#pragma once

#include <string>

#include "components/descriptives/FieldSummary.h"

namespace EmbeddedHV {

/// The text of "PMML.xml", docs/descriptives.md: a PMML document with the data dictionary and,
/// since statistics stand in a model there and this has none, an extension that holds them in the
/// elements of PMML.
std::string pmmlDocument(const DataSummary& summary);

} // namespace EmbeddedHV
