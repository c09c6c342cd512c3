#pragma once

#include <pugixml.hpp>

#include "components/descriptives/model/FieldSummary.h"

namespace EmbeddedHV {

/// Adds the analyses of a field to its FieldSummary element.
void addAnalysesOfField(pugi::xml_node& node, const FieldSummary& field, bool weighted);
/// Adds the pairs of fields to the summaries of a data set.
void addPairs(pugi::xml_node& summaries, const DataSummary& summary);
/// Adds the patterns of missing values to the summaries of a data set, if they were counted.
void addMissingPatterns(pugi::xml_node& summaries, const DataSummary& summary);

} // namespace EmbeddedHV
