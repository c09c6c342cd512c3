#include <algorithm>
#include <limits>

#include "descriptive/HVDescriptive.h"
#include "dialog/DialogCases.h"
#include "dialog/RequestScope.h"
#include "support/Transcoding.h"
#include "tcm/HVInteractiveTSR.h"

// The description of data for a training.

namespace {

/// kLimitOfFewValues replaces smaller limits of the caller.
constexpr int kFewValues = 100;
constexpr int kLimitOfFewValues = 105;
/// The level of the variable itself.
constexpr auto kOwnLevel = static_cast<MeasurementLevel>(-1);

/// One value more than the caller's limit shows that there are more.
int limitOf(int maxValues)
{
    if (maxValues < kFewValues)
        return kLimitOfFewValues;
    return std::min(maxValues, std::numeric_limits<int>::max() - 1) + 1;
}

} // namespace

bool HVInteractiveTSR::getGatingInfo(LocallyUniqueID dataset, const std::string& dataPath,
                                     const std::string& dateTimeField,
                                     const std::vector<std::string>& fields, int maxValues,
                                     std::string& timeInterval, std::string& dataModel)
{
    beginRequest();
    DialogChoice choice{dataset, dataPath, fields,
                        std::vector<MeasurementLevel>(fields.size(), MeasurementLevel::Nominal)};
    std::vector<std::string> inputs;
    inputs.reserve(fields.size());
    for (const std::string& field : fields)
        inputs.push_back(transcodeToUTF8(field.c_str(), converter()));
    std::vector<std::string> dates;
    if (!dateTimeField.empty()) {
        choice.variables.push_back(dateTimeField);
        choice.levels.push_back(kOwnLevel);
        dates.push_back(transcodeToUTF8(dateTimeField.c_str(), converter()));
    }
    std::string reason;
    const std::unique_ptr<DialogCases> cases = DialogCases::open(choice, "inputData", reason);
    if (cases == nullptr) {
        if (reason.empty())
            setTranslatedException("Cannot read the selected file.");
        else
            setException(reason);
        return false;
    }
    RequestScope request(*this);
    const bool isDescribed =
        HVDescriptive(runner(), &cases->rows())
            .UpdateDateModel(&inputs, &dates, true, timeInterval, dataModel, limitOf(maxValues));
    request.end();
    return isDescribed;
}
