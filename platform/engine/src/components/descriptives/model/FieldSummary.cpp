#include "components/descriptives/model/FieldSummary.h"

namespace EmbeddedHV {

Fields fieldsOf(const DataSummary& summary)
{
    Fields fields;
    for (const FieldSummary& field : summary.fields)
        fields.push_back(field.field);
    return fields;
}

bool isNumber(const CFField& field)
{
    return field.GetStorage() == CFField::Integer || field.GetStorage() == CFField::Real;
}

bool isMoment(const CFField& field)
{
    return field.GetStorage() == CFField::Date || field.GetStorage() == CFField::Time ||
           field.GetStorage() == CFField::Timestamp;
}

bool isText(const CFField& field)
{
    return !isNumber(field) && !isMoment(field);
}

bool isCategorical(const CFField& field)
{
    return isText(field) || field.GetType() != CFField::Continuous;
}

} // namespace EmbeddedHV
