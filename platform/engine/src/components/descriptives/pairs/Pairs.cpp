#include "components/descriptives/pairs/Pairs.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "components/descriptives/pairs/CategoryPairs.h"
#include "components/descriptives/pairs/NumberPairs.h"
#include "components/descriptives/pairs/PairPlan.h"

namespace EmbeddedHV {

void fillPairs(const ComponentQueries& queries, const InputTable& table,
               const std::string& partName, const PairRule& rule, DataSummary& summary)
{
    if (!rule.wantsAny())
        return;
    auto pairs = plannedPairs(summary, rule);
    if (!pairs)
        throw JobError(
            errors::kSettingType,
            {.step = "descriptives:descriptives",
             .setting = rule.all ? "computeBivStatsForBDP" : "computeAllTargetInputPairs",
             .what = "requests more than " + std::to_string(kMostPairs) +
                     " pairs of fields; list fewer fields"});
    summary.pairs = std::move(*pairs);
    fillNumberPairs(queries, table, summary, summary.pairs);
    fillGroupPairs(queries, table, partName, summary, summary.pairs);
    fillCategoryPairs(queries, table, partName, summary, summary.pairs);
}

} // namespace EmbeddedHV
