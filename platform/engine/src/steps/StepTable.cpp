#include "steps/StepTable.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "ErrorIds.h"
#include "JobError.h"
#include "expression/NearestName.h"

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
    {"aggregate", StepInputs::One, StepArguments::Configuration, planAggregate},
    {"join", StepInputs::Tagged, StepArguments::Configuration, planJoin},
    {"union", StepInputs::Tagged, StepArguments::OptionalConfiguration, planUnion},
    {"updateDataModel", StepInputs::One, StepArguments::Configuration, planUpdateDataModel},
    {"dataModelBuilder", StepInputs::One, StepArguments::ConfigurationAndExport,
     planDataModelBuilder},
};

/// Steps of the language that other engines run.
constexpr std::string_view kUnavailable[] = {"reprojection"};

} // namespace

const StepKind& stepKind(const language::Step& step)
{
    const auto* found = std::find_if(std::begin(kSteps), std::end(kSteps),
                                     [&](const StepKind& kind) { return step.name == kind.name; });
    if (step.nameSpace.empty() && found != std::end(kSteps))
        return *found;
    const bool known = std::find(std::begin(kUnavailable), std::end(kUnavailable), step.name) !=
                       std::end(kUnavailable);
    if (!step.nameSpace.empty() || known)
        throw JobError(errors::kNotAvailable,
                       (step.nameSpace.empty() ? "the step \"" : "the component \"") +
                           step.fullName() + "\" is not available in this engine yet");
    std::vector<std::string_view> names(std::begin(kUnavailable), std::end(kUnavailable));
    for (const StepKind& kind : kSteps)
        names.emplace_back(kind.name);
    throw JobError(errors::kUnknownStep, step.position.text() + ": there is no step \"" +
                                             step.name + "\"" + suggestion(step.name, names));
}

} // namespace EmbeddedHV
