#pragma once

#include <vector>

#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/settings/PairRule.h"

namespace EmbeddedHV {

/// More pairs than this are not computed.
inline constexpr std::size_t kMostPairs = 100'000;

/// Whether a field is compared as a number; otherwise as a category.
bool isPairedNumber(const CFField& field);
/// Whether a field can be compared: a continuous number, or a category whose values are listed.
bool isPaired(const FieldSummary& field);

/// The pairs of the rule without their statistics: those of the targets first, each pair once, in
/// the order of the fields. Empty if there are more than kMostPairs.
std::optional<std::vector<PairStatistic>> plannedPairs(const DataSummary& summary,
                                                       const PairRule& rule);

} // namespace EmbeddedHV
