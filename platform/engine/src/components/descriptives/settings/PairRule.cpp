#include "components/descriptives/settings/PairRule.h"

namespace EmbeddedHV {
namespace {

std::vector<std::string> targetsAmong(const Fields& fields)
{
    std::vector<std::string> names;
    for (const CFField& field : fields)
        if (field.GetRole() == CFField::Target || field.GetRole() == CFField::Both)
            names.push_back(field.GetName());
    return names;
}

} // namespace

PairRule pairRuleOf(const Fields& fields, const Settings& settings)
{
    PairRule rule;
    rule.all = settings.flag("computeBivStatsForBDP").value_or(false);
    const std::string target = settings.text("targetField").value_or("");
    const bool isRequested = settings.flag("computeAllTargetInputPairs").value_or(false);
    if (!target.empty() && !findField(fields, target))
        settings.refuse("targetField", "is \"" + target + "\", which is not a described field");
    if (!isRequested)
        return rule;
    rule.targets = target.empty() ? targetsAmong(fields) : std::vector{target};
    if (rule.targets.empty())
        settings.refuse("computeAllTargetInputPairs",
                        "is true, but no described field has the role of a target; targetField "
                        "can name one");
    return rule;
}

} // namespace EmbeddedHV
