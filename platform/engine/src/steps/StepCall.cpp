#include "steps/StepCall.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"

namespace EmbeddedHV {

Fields chosenFields(const Fields& fields, const std::set<std::string>& names)
{
    Fields chosen;
    std::copy_if(fields.begin(), fields.end(), std::back_inserter(chosen),
                 [&names](const CFField& field) { return names.contains(field.GetName()); });
    return chosen;
}

const CFField& fieldOf(const Fields& fields, const std::string& field, const FieldUse& use)
{
    if (const CFField* found = findField(fields, field))
        return *found;
    const std::string suggestion = base::suggestion(field, fields, &CFField::GetName);
    throw JobError(errors::kUnknownField,
                   {.step = use.step,
                    .field = field,
                    .namedBy = use.setting,
                    .hasSuggestion = !suggestion.empty(),
                    .what = use.owner + " has no field \"" + field + "\"" + suggestion});
}

void refuseDuplicate(const Fields& fields, const std::string& field, const std::string& step,
                     const std::string& setting)
{
    if (field.empty())
        throw JobError(errors::kSettingType,
                       {.step = step, .what = "the name of a field is empty"});
    // The database ends a name at a zero byte, so two names could become equal.
    if (field.find('\0') != std::string::npos)
        throw JobError(errors::kSettingType,
                       {.step = step, .what = "the name of a field holds the character NUL"});
    // The database does not distinguish names that differ only in letter case.
    const CFField* taken = findFieldAnyCase(fields, field);
    if (!taken)
        return;
    const std::string difference =
        taken->GetName() == field ? std::string()
                                  : ", and \"" + field + "\" differs from it only in letter case";
    throw JobError(errors::kDuplicateField,
                   {.step = step,
                    .field = field,
                    .namedBy = setting,
                    .what = "there is a field \"" + taken->GetName() + "\" already" + difference});
}

Fields StepCall::takeFields()
{
    Node& node = *input();
    return input().use_count() == 1 ? std::move(node.fields) : node.fields;
}

const CFField& StepCall::inputField(const std::string& field, const std::string& setting) const
{
    // A step may name each of thousands of fields.
    if (!inputIndex)
        inputIndex.emplace(input()->fields);
    const auto place = inputIndex->place(field);
    return place ? input()->fields[*place]
                 : fieldOf(input()->fields, field, {.step = name, .setting = setting});
}

} // namespace EmbeddedHV
