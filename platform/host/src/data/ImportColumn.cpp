#include "data/ImportColumn.h"

#include "datafile/ColumnTypes.h"
#include "datafile/SqlQuoting.h"

namespace {

bool isNested(const std::string& type)
{
    return type.starts_with("STRUCT(") || type.starts_with("MAP(") || type.ends_with("[]");
}

} // namespace

const char* importType(datafile::CsvKind kind)
{
    using datafile::CsvKind;
    switch (kind) {
    case CsvKind::Integer:
        return datafile::sqlTypeOf(CFField::Integer);
    case CsvKind::Real:
        return datafile::sqlTypeOf(CFField::Real);
    case CsvKind::Date:
        return datafile::sqlTypeOf(CFField::Date);
    case CsvKind::Time:
        return datafile::sqlTypeOf(CFField::Time);
    case CsvKind::Timestamp:
        return datafile::sqlTypeOf(CFField::Timestamp);
    default:
        return datafile::sqlTypeOf(CFField::String);
    }
}

std::string readType(const std::string& found)
{
    for (const char* known :
         {"BIGINT", "DOUBLE", "DATE", "TIME", "TIMESTAMP", "TIMESTAMP WITH TIME ZONE"})
        if (found == known)
            return found;
    return "VARCHAR";
}

std::string selectedItem(const ImportColumn& column)
{
    const std::string name = datafile::quotedIdentifier(column.name);
    const std::string as = " AS " + name;
    if (!column.value.empty())
        return column.value + as;
    if (column.type == "TIMESTAMP WITH TIME ZONE")
        return name + " AT TIME ZONE 'UTC'" + as;
    if (column.type == "UBIGINT" || column.type == "HUGEINT")
        return "CAST(" + name + " AS DOUBLE)" + as;
    // A field with values of several kinds.
    if (column.type == "JSON")
        return "CASE json_type(" + name + ") WHEN 'VARCHAR' THEN " + name + " ->> '$' ELSE CAST(" +
               name + " AS VARCHAR) END" + as;
    if (isNested(column.type))
        return "CAST(to_json(" + name + ") AS VARCHAR)" + as;
    return readType(column.type) == column.type ? name : "CAST(" + name + " AS VARCHAR)" + as;
}
