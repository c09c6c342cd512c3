#include "components/descriptives/outliers/Outliers.h"

#include <cmath>

#include "components/descriptives/outliers/OutlierBounds.h"
#include "components/descriptives/summary/FieldParts.h"
#include "components/descriptives/summary/Summaries.h"
#include "components/descriptives/summary/ValueCounts.h"
#include "duckdb/DuckDialect.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostValues = 20;

/// SQL for the values beyond a bound.
struct Sides
{
    Sides(const std::string& x, const OutlierSummary& bounds)
        : below(x + " < " + duckDialect().literal(bounds.lower)),
          above(x + " > " + duckDialect().literal(bounds.upper)),
          farBelow(x + " < " + duckDialect().literal(bounds.extremeLower)),
          farAbove(x + " > " + duckDialect().literal(bounds.extremeUpper))
    {
    }

    std::string below;
    std::string above;
    std::string farBelow;
    std::string farAbove;
};

void countSides(const ComponentQueries& queries, const std::string& from, const Sides& sides,
                OutlierSummary& outliers)
{
    const auto counts = [](const std::string& side, const std::string& far) {
        return "count(*) FILTER (" + side + "), CAST(sum(w) FILTER (" + side +
               ") AS DOUBLE), count(*) FILTER (" + far + "), ";
    };
    duck::Result row =
        queries.run("SELECT " + counts(sides.below, sides.farBelow) +
                    counts(sides.above, sides.farAbove) + "CAST(min(x) FILTER (NOT " + sides.below +
                    ") AS DOUBLE), CAST(max(x) FILTER (NOT " + sides.above + ") AS DOUBLE)" + from);
    outliers.below = {row.integer(0, 0), row.real(1, 0).value_or(0), row.integer(2, 0)};
    outliers.above = {row.integer(3, 0), row.real(4, 0).value_or(0), row.integer(5, 0)};
    outliers.least = row.real(6, 0);
    outliers.greatest = row.real(7, 0);
}

void listValues(const ComponentQueries& queries, const std::string& from, const Sides& sides,
                CFField::StorageType storage, OutlierSummary& outliers)
{
    if (outliers.below.records + outliers.above.records == 0)
        return;
    duck::Result rows = queries.run(
        "SELECT x, count(*), CAST(sum(w) AS DOUBLE), CAST(" + sides.farBelow + " OR " +
        sides.farAbove + " AS BIGINT)" + from + " AND (" + sides.below + " OR " + sides.above +
        ") GROUP BY x ORDER BY greatest(" + duckDialect().literal(outliers.lower) + " - x, x - " +
        duckDialect().literal(outliers.upper) + ") DESC, x LIMIT " + std::to_string(kMostValues));
    for (std::size_t row = 0; row < rows.rows(); ++row) {
        ValueCount count = valueCountAt(rows, row, storage);
        outliers.values.push_back(
            {std::move(count.value), count.records, count.weight, rows.integer(3, row) == 1});
    }
}

void findOutliers(const ComponentQueries& queries, const InputTable& table, OutlierMethod method,
                  FieldSummary& field)
{
    field.outliers = outlierBounds(queries, table, method, field);
    if (!field.outliers)
        return;
    const std::string x = table.column(field.field);
    const std::string from = " FROM (SELECT " + x + " AS x, " + InputTable::kWeight +
                             " AS w FROM " + table.name() + ") WHERE x IS NOT NULL";
    const Sides sides("x", *field.outliers);
    countSides(queries, from, sides, *field.outliers);
    listValues(queries, from, sides, field.field.GetStorage(), *field.outliers);
}

/// SQL for the nearest value of the field's storage inside a bound.
std::string inside(double bound, const CFField& field)
{
    return field.GetStorage() == CFField::Integer
               ? "CAST(" + duckDialect().literal(bound) + " AS BIGINT)"
               : duckDialect().literal(bound);
}

/// SQL that replaces the outliers of a field; empty if it has none. Bounds without an outlier may
/// be beyond the range of the storage, so they are not used.
std::string replacement(const std::string& x, const FieldSummary& field, OutlierHandling handling)
{
    const OutlierSummary& outliers = *field.outliers;
    const Sides sides(x, outliers);
    const bool trims = handling == TrimOutliers;
    const bool isWhole = field.field.GetStorage() == CFField::Integer;
    std::string cases;
    if (outliers.below.records > 0)
        cases +=
            " WHEN " + sides.below + " THEN " +
            (trims ? "NULL"
                   : inside(isWhole ? std::ceil(outliers.lower) : outliers.lower, field.field));
    if (outliers.above.records > 0)
        cases +=
            " WHEN " + sides.above + " THEN " +
            (trims ? "NULL"
                   : inside(isWhole ? std::floor(outliers.upper) : outliers.upper, field.field));
    return cases.empty() ? "" : x + " = CASE" + cases + " ELSE " + x + " END";
}

/// Returns whether there was an outlier to replace.
bool replaceOutliers(const ComponentQueries& queries, const InputTable& table,
                     OutlierHandling handling, const DataSummary& summary)
{
    std::string changes;
    for (const FieldSummary& field : summary.fields) {
        if (!field.outliers)
            continue;
        const std::string change = replacement(table.column(field.field), field, handling);
        if (!change.empty())
            changes += (changes.empty() ? "" : ", ") + change;
    }
    if (!changes.empty())
        queries.run("UPDATE " + table.name() + " SET " + changes);
    return !changes.empty();
}

/// Statistics of the changed table, with the outliers that were found before.
void summarizeAgain(const ComponentQueries& queries, const InputTable& table,
                    const DescriptivesSettings& settings, const std::string& partName,
                    DataSummary& summary)
{
    DataSummary changed = summarize(queries, table, settings, partName);
    changed.leftOut = summary.leftOut;
    for (std::size_t i = 0; i < summary.fields.size(); ++i)
        changed.fields[i].outliers = std::move(summary.fields[i].outliers);
    summary = std::move(changed);
}

} // namespace

void handleOutliers(const ComponentQueries& queries, const InputTable& table,
                    const DescriptivesSettings& settings, const std::string& partName,
                    DataSummary& summary)
{
    if (!settings.analyses.outliers)
        return;
    const OutlierRule& rule = *settings.analyses.outliers;
    forFieldParts(queries, table, partName, summary,
                  [&](const InputTable& part, DataSummary& some) {
                      for (FieldSummary& field : some.fields)
                          if (isNumber(field.field) && !isCategorical(field.field))
                              findOutliers(queries, part, rule.method, field);
                  });
    if (rule.handling != MarkOutliers && replaceOutliers(queries, table, rule.handling, summary))
        summarizeAgain(queries, table, settings, partName, summary);
}

} // namespace EmbeddedHV
