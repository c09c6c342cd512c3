#pragma once

#include <nlohmann/json.hpp>

#include "hvhost/describe/Description.h"
#include "hvhost/show/ResultTable.h"

/// Adds percentiles and outliers to a field of a JSON document, if it has any.
void putAnalyses(nlohmann::ordered_json& json, const FieldDescription& field);
/// The pairs of a group as a JSON list.
nlohmann::ordered_json jsonPairs(const GroupDescription& group);
/// The patterns of missing values of a group as a JSON list.
nlohmann::ordered_json jsonMissingPatterns(const GroupDescription& group);
/// The patterns of missing values of a group, with a row for each.
ResultTable missingPatternsTable(const GroupDescription& group);
/// The pairs of a group, with a row for each.
ResultTable pairsTable(const GroupDescription& group);
