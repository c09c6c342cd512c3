#pragma once

#include <string>
#include <vector>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The pairs of fields to compare.
struct PairRule
{
    bool all = false;
    std::vector<std::string> targets; ///< each is compared with all other fields

    bool wantsAny() const { return all || !targets.empty(); }
};

/// Reads computeBivStatsForBDP, computeAllTargetInputPairs and targetField. `fields` are those to
/// be described. Throws JobError.
PairRule pairRuleOf(const Fields& fields, const Settings& settings);

} // namespace EmbeddedHV
