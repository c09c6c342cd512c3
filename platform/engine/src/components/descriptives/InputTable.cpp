#include "components/descriptives/InputTable.h"

#include <algorithm>

#include "components/descriptives/FieldSummary.h"
#include "datafile/SqlQuoting.h"
#include "steps/UserMissing.h"

namespace EmbeddedHV {

InputTable::InputTable(const std::string& name, const DescriptivesSettings& settings)
    : _quotedName(quotedIdentifier(name)), _weight(settings.weight),
      _trimsBlanks(settings.trimsBlanks), _forResults(settings.wants(ContainerKind::Results)),
      _forMissing(settings.tellsMissing())
{
    for (const CFField& field : settings.fields)
        add(field);
    for (const Fields& point : settings.points)
        for (const CFField& field : point)
            add(field);
}

void InputTable::add(const CFField& field)
{
    if (!findField(_fields, field.GetName()))
        _fields.push_back(field);
}

std::size_t InputTable::place(const CFField& field) const
{
    const auto found = std::find_if(_fields.begin(), _fields.end(), [&](const CFField& known) {
        return known.GetName() == field.GetName();
    });
    return static_cast<std::size_t>(found - _fields.begin());
}

bool InputTable::tellsMissing(const CFField& field) const
{
    return _forMissing && isCategorical(field) && field.GetMissingValues().IsValid();
}

std::string InputTable::column(const CFField& field) const
{
    return "c" + std::to_string(place(field));
}

std::optional<std::string> InputTable::missingColumn(const CFField& field) const
{
    return tellsMissing(field) ? std::optional("m" + std::to_string(place(field))) : std::nullopt;
}

std::string InputTable::rawName(const CFField& field) const
{
    return quotedIdentifier(unusedName(_fields, "hv_raw_" + std::to_string(place(field))));
}

std::string InputTable::source(const CFField& field) const
{
    std::string name = quotedIdentifier(field.GetName());
    if (field.GetStorage() == CFField::Real)
        // One infinite value would make every sum and mean of the field infinite or not-a-number.
        return "CASE WHEN isfinite(" + name + ") THEN " + name + " END";
    if (_trimsBlanks && field.GetStorage() == CFField::String)
        return "rtrim(" + name + ", ' ')";
    return name;
}

std::string InputTable::creation(const std::string& select) const
{
    std::vector<std::string> sources;
    std::string columns;
    std::string raw;
    for (const CFField& field : _fields) {
        const std::string name = quotedIdentifier(field.GetName());
        sources.push_back(source(field));
        columns += name + " AS " + column(field) + ", ";
        if (const auto missing = missingColumn(field)) {
            raw += sources.back() + " AS " + rawName(field) + ", ";
            columns += "CASE WHEN " + name + " IS NULL THEN " + rawName(field) + " END AS " +
                       *missing + ", ";
        }
    }
    const std::string weight =
        _weight ? "CAST(" + quotedIdentifier(*_weight) + " AS DOUBLE)" : "CAST(1 AS UTINYINT)";
    const std::string weightName = quotedIdentifier(unusedName(_fields, "hv_weight"));
    const std::string counts = "isfinite(" + weightName + ") AND " + weightName + " > 0";
    const std::string list = selectList(_fields, sources);
    return "CREATE TEMP TABLE " + _quotedName + " AS SELECT " + columns +
           (keepsLeftOut() ? "CASE WHEN " + counts + " THEN " + weightName + " END" : weightName) +
           " AS " + kWeight + " FROM (SELECT " + raw + list + (list.empty() ? "" : ", ") + weight +
           " AS " + weightName + " FROM (" + select + "))" +
           (_weight && !keepsLeftOut() ? " WHERE " + counts : std::string());
}

} // namespace EmbeddedHV
