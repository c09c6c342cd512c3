#include "components/table/ComponentTable.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "components/descriptives/Descriptives.h"
#include "components/temporal/explanation/OutputComponent.h"
#include "components/temporal/preparation/Rtsdp.h"
#include "components/temporal/preparation/Tsdp.h"
#include "components/temporal/scoring/ModelCapabilities.h"
#include "components/temporal/scoring/ScoreStage.h"
#include "components/temporal/training/Train.h"

namespace EmbeddedHV {
namespace {

constexpr StepKind kComponents[] = {
    {"descriptives:descriptives", StepInputs::One, StepArguments::Component, planDescriptives,
     describedFields},
    {"tsdp:tsdp", StepInputs::One, StepArguments::Component, planTsdp, preparedFields},
    {"tcm:train", StepInputs::One, StepArguments::ComponentWithInputs, planTrain},
    {"tcm:score", StepInputs::One, StepArguments::ComponentWithInputs, planTcmScore},
    {"tcm:ar", StepInputs::One, StepArguments::ComponentWithInputs, planTcmAr},
    {"scoring:scoring", StepInputs::None, StepArguments::ComponentWithInputs,
     planModelCapabilities},
    {"OutputComponent:TCMOutputComponent", StepInputs::AtMostOne,
     StepArguments::ComponentWithInputs, planTcmOutput},
    {"rtsdp:rtsdp", StepInputs::One, StepArguments::ComponentWithInputs, planRtsdp},
};

} // namespace

const StepKind& componentKind(const language::Step& step)
{
    const std::string name = step.fullName();
    const auto* found = std::find_if(std::begin(kComponents), std::end(kComponents),
                                     [&](const StepKind& kind) { return name == kind.name; });
    if (found != std::end(kComponents))
        return *found;
    std::vector<std::string_view> names;
    for (const StepKind& kind : kComponents)
        names.emplace_back(kind.name);
    const std::string suggestion = base::suggestion(name, names);
    throw JobError(errors::kNotAvailable,
                   {.name = name,
                    .hasSuggestion = !suggestion.empty(),
                    .what = "the component \"" + name + "\" is not available in this engine yet" +
                            suggestion});
}

} // namespace EmbeddedHV
