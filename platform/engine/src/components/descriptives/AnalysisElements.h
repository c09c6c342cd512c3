#pragma once

#include <pugixml.hpp>

#include "components/descriptives/model/FieldSummary.h"

namespace EmbeddedHV {

/// Adds the analyses of a field to its FieldSummary element.
void addAnalysesOfField(pugi::xml_node& node, const FieldSummary& field, bool weighted);

} // namespace EmbeddedHV
