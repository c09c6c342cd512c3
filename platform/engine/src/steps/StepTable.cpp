#include "steps/StepTable.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "language/TextCursor.h"

namespace EmbeddedHV {
namespace {

constexpr StepKind kSteps[] = {
    {"read", StepInputs::None, StepArguments::Configuration, planRead},
    {"write", StepInputs::One, StepArguments::Configuration, planWrite},
    {"filterFields", StepInputs::One, StepArguments::Configuration, planFilterFields},
    {"filterRecords", StepInputs::One, StepArguments::Lambda, planFilterRecords},
    {"deriveField", StepInputs::One, StepArguments::Lambda, planDeriveField},
    {"reclassifyField", StepInputs::One, StepArguments::Lambda, planReclassifyField},
    {"balanceRecords", StepInputs::One, StepArguments::Lambda, planBalanceRecords},
    {"sortRecords", StepInputs::One, StepArguments::Configuration, planSortRecords},
    {"limitRecords", StepInputs::One, StepArguments::Configuration, planLimitRecords},
    {"sampleRecords", StepInputs::One, StepArguments::Configuration, planSampleRecords},
    {"distinctRecords", StepInputs::One, StepArguments::OptionalConfiguration, planDistinctRecords},
    {"aggregate", StepInputs::One, StepArguments::Configuration, planAggregate},
    {"join", StepInputs::Tagged, StepArguments::Configuration, planJoin},
    {"union", StepInputs::Tagged, StepArguments::OptionalConfiguration, planUnion},
    {"updateDataModel", StepInputs::One, StepArguments::Configuration, planUpdateDataModel},
    {"dataModelBuilder", StepInputs::One, StepArguments::ConfigurationAndExport,
     planDataModelBuilder},
    {"reprojection", StepInputs::One, StepArguments::Configuration, planReprojection},
};

} // namespace

const StepKind& stepKind(const language::Step& step, ComponentLookup components)
{
    if (!step.nameSpace.empty())
        return components(step);
    const auto* found = std::find_if(std::begin(kSteps), std::end(kSteps),
                                     [&](const StepKind& kind) { return step.name == kind.name; });
    if (found != std::end(kSteps))
        return *found;
    std::vector<std::string_view> names;
    for (const StepKind& kind : kSteps)
        names.emplace_back(kind.name);
    const std::string suggestion = base::suggestion(step.name, names);
    language::failAt(step.position, "there is no step \"" + step.name + "\"" + suggestion,
                     errors::kUnknownStep,
                     {.name = step.name, .hasSuggestion = !suggestion.empty()});
}

} // namespace EmbeddedHV
