#include "components/descriptives/summary/InputTable.h"

#include "components/descriptives/model/FieldSummary.h"
#include "datafile/SqlQuoting.h"
#include "duckdb/DuckDialect.h"
#include "runtime/FiniteReals.h"
#include "steps/UserMissing.h"

namespace EmbeddedHV {

InputTable::InputTable(const std::string& name, const DescriptivesSettings& settings)
    : _quotedName(quotedIdentifier(name)), _columns(columnsOf(settings)), _weight(settings.weight),
      _group(settings.groupField), _trimsBlanks(settings.trimsBlanks),
      _forResults(settings.wants(ContainerKind::Results)), _forMissing(settings.tellsMissing())
{
}

std::shared_ptr<const InputTable::Columns>
InputTable::columnsOf(const DescriptivesSettings& settings)
{
    auto columns = std::make_shared<Columns>();
    const auto add = [&](const CFField& field) {
        if (columns->index.add(field.GetName()))
            columns->fields.push_back(field);
    };
    for (const CFField& field : settings.fields)
        add(field);
    for (const Fields& point : settings.points)
        for (const CFField& field : point)
            add(field);
    return columns;
}

InputTable InputTable::part(const std::string& name) const
{
    InputTable part = *this;
    part._quotedName = quotedIdentifier(name);
    return part;
}

InputTable InputTable::group(const std::string& name) const
{
    InputTable group = part(name);
    group._group.reset();
    return group;
}

std::string InputTable::partCreation(const InputTable& part, const Fields& fields) const
{
    return copyCreation(part, fields);
}

std::string InputTable::groupCreation(const InputTable& group, std::size_t number) const
{
    return copyCreation(group, _columns->fields) + " WHERE " + kGroup + " = " +
           std::to_string(number);
}

/// The SQL that copies the columns of the fields, and those that all tables of this kind have.
std::string InputTable::copyCreation(const InputTable& copy, const Fields& fields) const
{
    std::string columns;
    for (const CFField& field : fields) {
        columns += column(field) + ", ";
        if (const auto missing = missingColumn(field))
            columns += *missing + ", ";
    }
    if (copy.isGrouped())
        columns += std::string(kGroup) + ", ";
    return "CREATE OR REPLACE TEMP TABLE " + copy.name() + " AS SELECT " + columns + kWeight +
           " FROM " + name();
}

std::size_t InputTable::place(const CFField& field) const
{
    return _columns->index.place(field.GetName()).value_or(_columns->fields.size());
}

bool InputTable::tellsMissing(const CFField& field) const
{
    // As the field was when the table was made; its measure may have been changed since.
    const CFField& original = _columns->fields[place(field)];
    return _forMissing && isCategorical(original) && original.GetMissingValues().IsValid();
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
    return quotedIdentifier(unusedName(_columns->fields, "hv_raw_" + std::to_string(place(field))));
}

std::string InputTable::source(const CFField& field) const
{
    std::string name = quotedIdentifier(field.GetName());
    if (field.GetStorage() == CFField::Real)
        // One infinite value would make every sum and mean of the field infinite or not-a-number.
        return finiteReal(name);
    if (_trimsBlanks && field.GetStorage() == CFField::String)
        return "rtrim(" + name + ", ' ')";
    return name;
}

std::string InputTable::creation(const std::string& select) const
{
    std::vector<std::string> sources;
    std::string columns;
    std::string raw;
    for (const CFField& field : _columns->fields) {
        const std::string name = quotedIdentifier(field.GetName());
        sources.push_back(source(field));
        columns += name + " AS " + column(field) + ", ";
        if (const auto missing = missingColumn(field)) {
            raw += sources.back() + " AS " + rawName(field) + ", ";
            columns += "CASE WHEN " + name + " IS NULL THEN " + rawName(field) + " END AS " +
                       *missing + ", ";
        }
    }
    if (_group) {
        const std::string name = quotedIdentifier(unusedName(_columns->fields, "hv_group"));
        raw += quotedIdentifier(*_group) + " AS " + name + ", ";
        columns += name + " AS " + kGroup + ", ";
    }
    const std::string weight =
        _weight ? "CAST(" + quotedIdentifier(*_weight) + " AS DOUBLE)" : "CAST(1 AS UTINYINT)";
    const std::string weightName = quotedIdentifier(unusedName(_columns->fields, "hv_weight"));
    const std::string counts = "isfinite(" + weightName + ") AND " + weightName + " > 0";
    const std::string list = selectList(duckDialect(), _columns->fields, sources);
    return "CREATE TEMP TABLE " + _quotedName + " AS SELECT " + columns +
           (keepsLeftOut() ? "CASE WHEN " + counts + " THEN " + weightName + " END" : weightName) +
           " AS " + kWeight + " FROM (SELECT " + raw + list + (list.empty() ? "" : ", ") + weight +
           " AS " + weightName + " FROM (" + select + "))" +
           (_weight && !keepsLeftOut() ? " WHERE " + counts : std::string());
}

} // namespace EmbeddedHV
