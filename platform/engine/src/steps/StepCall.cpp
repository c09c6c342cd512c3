#include "steps/StepCall.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"

namespace EmbeddedHV {

const CFField& fieldOf(const Fields& fields, const std::string& field, const std::string& owner)
{
    if (const CFField* found = findField(fields, field))
        return *found;
    throw JobError(errors::kUnknownField, owner + " has no field \"" + field + "\"" +
                                              base::suggestion(field, fields, &CFField::GetName));
}

void refuseDuplicate(const Fields& fields, const std::string& field, const std::string& step)
{
    if (field.empty())
        throw JobError(errors::kSettingType, step + ": the name of a field is empty");
    // The database ends a name at a zero byte, so two names could become equal.
    if (field.find('\0') != std::string::npos)
        throw JobError(errors::kSettingType,
                       step + ": the name of a field holds the character NUL");
    // The database does not distinguish names that differ only in letter case.
    const CFField* taken = findFieldAnyCase(fields, field);
    if (!taken)
        return;
    throw JobError(errors::kDuplicateField,
                   step + ": there is a field \"" + taken->GetName() + "\" already" +
                       (taken->GetName() == field
                            ? std::string()
                            : ", and \"" + field + "\" differs from it only in letter case"));
}

Fields StepCall::takeFields()
{
    Node& node = *input();
    return input().use_count() == 1 ? std::move(node.fields) : node.fields;
}

const CFField& StepCall::inputField(const std::string& field) const
{
    return fieldOf(input()->fields, field, name + ": the input");
}

} // namespace EmbeddedHV
