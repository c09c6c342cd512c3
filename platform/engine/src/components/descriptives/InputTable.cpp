#include "components/descriptives/InputTable.h"

#include <algorithm>

#include "datafile/SqlQuoting.h"
#include "steps/UserMissing.h"

namespace EmbeddedHV {

InputTable::InputTable(std::string name, const DescriptivesSettings& settings)
    : _quotedName(quotedIdentifier(name)), _weight(settings.weight),
      _trimsBlanks(settings.trimsBlanks)
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

std::string InputTable::column(const CFField& field) const
{
    const auto found = std::find_if(_fields.begin(), _fields.end(), [&](const CFField& known) {
        return known.GetName() == field.GetName();
    });
    return "c" + std::to_string(found - _fields.begin());
}

std::string InputTable::source(const CFField& field) const
{
    const std::string name = quotedIdentifier(field.GetName());
    if (field.GetStorage() == CFField::Real)
        return "CASE WHEN isfinite(" + name + ") THEN " + name + " END";
    if (_trimsBlanks && field.GetStorage() == CFField::String)
        return "rtrim(" + name + ", ' ')";
    return name;
}

std::string InputTable::creation(const std::string& select) const
{
    std::vector<std::string> sources;
    std::string columns;
    for (const CFField& field : _fields) {
        sources.push_back(source(field));
        columns += quotedIdentifier(field.GetName()) + " AS " + column(field) + ", ";
    }
    const std::string weight =
        _weight ? "CAST(" + quotedIdentifier(*_weight) + " AS DOUBLE)" : "CAST(1 AS UTINYINT)";
    const std::string weightName = unusedName(_fields, "hv_weight");
    const std::string list = selectList(_fields, sources);
    return "CREATE TEMP TABLE " + _quotedName + " AS SELECT " + columns +
           quotedIdentifier(weightName) + " AS " + kWeight + " FROM (SELECT " + list +
           (list.empty() ? "" : ", ") + weight + " AS " + quotedIdentifier(weightName) + " FROM (" +
           select + "))" +
           (_weight ? " WHERE isfinite(" + quotedIdentifier(weightName) + ") AND " +
                          quotedIdentifier(weightName) + " > 0"
                    : std::string());
}

} // namespace EmbeddedHV
