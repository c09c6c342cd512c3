#include "components/descriptives/counts/Durations.h"

#include <cmath>

#include "base/CivilTime.h"
#include "components/descriptives/summary/WeightedQuantiles.h"
#include "duckdb/DuckDialect.h"
#include "runtime/CompensatedSums.h"

namespace EmbeddedHV {
namespace {

bool isRequested(const CFField& field, const CountSettings& settings)
{
    if (!isMoment(field))
        return false;
    return field.GetStorage() == CFField::Time ? settings.timeDurations : settings.dateDurations;
}

double weightedSum(const ComponentQueries& queries, const InputTable& table,
                   const std::string& column, const std::string& x)
{
    return queries
        .run("SELECT " + std::string(kRealSum) + "(CAST(w AS DOUBLE) * " + x + ") FROM " +
             table.name() + " WHERE " + column + " IS NOT NULL")
        .real(0, 0)
        .value_or(0);
}

Duration durationOf(const ComponentQueries& queries, const InputTable& table,
                    const FieldSummary& field)
{
    Duration duration;
    duration.isInDays = field.field.GetStorage() != CFField::Time;
    const std::string column = table.column(field.field);
    const double first = queries.run("SELECT epoch(min(" + column + ")) FROM " + table.name())
                             .real(0, 0)
                             .value_or(0);
    const double unit = duration.isInDays ? base::kSecondsPerDay : 1;
    const std::string x = "((epoch(" + column + ") - " + duckDialect().literal(first) + ") / " +
                          duckDialect().literal(unit) + ")";
    const double weight = field.validWeight;
    const double mean = weightedSum(queries, table, column, x) / weight;
    duration.mean = mean;
    if (weight > 1) {
        const std::string deviation = "(" + x + " - " + duckDialect().literal(mean) + ")";
        duration.standardDeviation = std::sqrt(
            weightedSum(queries, table, column, deviation + " * " + deviation) / (weight - 1));
    }
    const auto quartiles = weightedQuantiles(queries, table, x, weight, {0.25, 0.5, 0.75, 1});
    duration.firstQuartile = quartiles[0];
    duration.median = quartiles[1];
    duration.thirdQuartile = quartiles[2];
    duration.longest = quartiles[3];
    return duration;
}

} // namespace

void fillDurations(const ComponentQueries& queries, const InputTable& table,
                   const CountSettings& settings, DataSummary& summary)
{
    for (FieldSummary& field : summary.fields)
        if (isRequested(field.field, settings) && field.valid > 0)
            field.duration = durationOf(queries, table, field);
}

} // namespace EmbeddedHV
