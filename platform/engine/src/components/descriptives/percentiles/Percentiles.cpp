#include "components/descriptives/percentiles/Percentiles.h"

#include "components/descriptives/summary/WeightedQuantiles.h"
#include "duckdb/DuckDialect.h"

namespace EmbeddedHV {
namespace {

/// The database keeps all values of the columns of a statement. So a statement has few columns.
constexpr std::size_t kColumnsAtOnce = 4;
constexpr double kPercent = 100;

std::vector<double> partsOf(const std::vector<double>& percents)
{
    std::vector<double> parts;
    parts.reserve(percents.size());
    for (const double percent : percents)
        parts.push_back(percent / kPercent);
    return parts;
}

std::vector<FieldSummary*> numericFields(DataSummary& summary)
{
    std::vector<FieldSummary*> fields;
    for (FieldSummary& field : summary.fields)
        if (isNumber(field.field) && field.valid > 0)
            fields.push_back(&field);
    return fields;
}

std::string asDouble(const InputTable& table, const FieldSummary& field)
{
    return "CAST(" + table.column(field.field) + " AS DOUBLE)";
}

/// A row for each percent, a column for each field.
duck::Result quantilesOf(const ComponentQueries& queries, const InputTable& table,
                         const std::vector<double>& parts,
                         const std::vector<const FieldSummary*>& fields)
{
    std::string list;
    for (const double part : parts)
        list += (list.empty() ? "[" : ", ") + duckDialect().literal(part);
    std::string columns;
    for (const FieldSummary* field : fields)
        columns += (columns.empty() ? "" : ", ") +
                   ("unnest(quantile_cont(" + asDouble(table, *field) + ", " + list + "]))");
    return queries.run("SELECT " + columns + " FROM " + table.name());
}

void fillBatch(const ComponentQueries& queries, const InputTable& table,
               const std::vector<double>& percents, const std::vector<FieldSummary*>& fields)
{
    duck::Result rows =
        quantilesOf(queries, table, partsOf(percents), {fields.begin(), fields.end()});
    for (std::size_t column = 0; column < fields.size(); ++column)
        for (std::size_t row = 0; row < percents.size(); ++row)
            fields[column]->percentiles.push_back({percents[row], rows.real(column, row)});
}

void fillWeighted(const ComponentQueries& queries, const InputTable& table,
                  const std::vector<double>& percents, FieldSummary& field)
{
    const auto quantiles = weightedQuantiles(queries, table, asDouble(table, field),
                                             field.validWeight, partsOf(percents));
    for (std::size_t i = 0; i < percents.size(); ++i)
        field.percentiles.push_back({percents[i], quantiles[i]});
}

} // namespace

void fillPercentiles(const ComponentQueries& queries, const InputTable& table,
                     const std::vector<double>& percents, DataSummary& summary)
{
    if (percents.empty())
        return;
    const std::vector<FieldSummary*> fields = numericFields(summary);
    if (table.isWeighted()) {
        for (FieldSummary* field : fields)
            fillWeighted(queries, table, percents, *field);
        return;
    }
    for (std::size_t begin = 0; begin < fields.size(); begin += kColumnsAtOnce) {
        const std::size_t end = std::min(begin + kColumnsAtOnce, fields.size());
        fillBatch(queries, table, percents,
                  {fields.begin() + static_cast<std::ptrdiff_t>(begin),
                   fields.begin() + static_cast<std::ptrdiff_t>(end)});
    }
}

} // namespace EmbeddedHV
