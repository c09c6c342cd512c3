#include "components/descriptives/fields/FoundStorage.h"

namespace EmbeddedHV {
namespace {

/// A storage, its type in the database, and SQL for whether the text x has its form.
struct StorageForm
{
    CFField::StorageType storage;
    const char* type;
    const char* condition;
};
constexpr StorageForm kForms[] = {
    {CFField::Integer, "BIGINT", "regexp_full_match(x, '[+-]?(0|[1-9][0-9]{0,17})')"},
    {CFField::Real, "DOUBLE",
     "regexp_full_match(x, '[+-]?(0|[1-9][0-9]*)(\\.[0-9]+)?([eE][+-]?[0-9]+)?') AND "
     "coalesce(isfinite(TRY_CAST(x AS DOUBLE)), false)"},
    {CFField::Date, "DATE",
     "regexp_full_match(x, '[0-9]{4}-[0-9]{2}-[0-9]{2}') AND TRY_CAST(x AS DATE) IS NOT NULL"},
};

/// SQL for the column as another type.
std::string castText(const std::string& column, const char* type)
{
    std::string sql = "TRY_CAST(trim(";
    return sql.append(column).append(") AS ").append(type).append(") AS ").append(column);
}

} // namespace

std::optional<FoundStorage> foundStorage(const ComponentQueries& queries, const InputTable& table,
                                         const CFField& field)
{
    const std::string column = table.column(field);
    std::string counts = "count(x)";
    for (const StorageForm& form : kForms)
        counts.append(", count(*) FILTER (").append(form.condition).append(")");
    duck::Result row =
        queries.run("SELECT " + counts + " FROM (SELECT trim(" + column + ") AS x FROM " +
                    table.name() + " WHERE " + InputTable::kWeight + " IS NOT NULL)");
    const std::int64_t valid = row.integer(0, 0);
    std::size_t result = 1;
    for (const StorageForm& form : kForms)
        if (valid > 0 && row.integer(result++, 0) == valid)
            // Records that the weight leaves out may have other texts.
            return FoundStorage{form.storage, castText(column, form.type)};
    return std::nullopt;
}

} // namespace EmbeddedHV
