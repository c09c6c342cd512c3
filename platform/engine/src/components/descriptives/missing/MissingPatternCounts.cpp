#include "components/descriptives/missing/MissingPatternCounts.h"

#include "components/descriptives/summary/FieldParts.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostListed = 20;
constexpr char kMissing = '1';

static_assert(kMostPatternFields <= kFieldsOfPart);

/// The positions of the fields that have missing values.
std::vector<std::size_t> incompleteFields(const DataSummary& summary)
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < summary.fields.size(); ++i)
        if (summary.fields[i].missing > 0)
            places.push_back(i);
    return places;
}

/// SQL for a text with a digit for each field: whether it is missing.
std::string patternOf(const InputTable& table, const DataSummary& summary,
                      const std::vector<std::size_t>& places)
{
    std::string digits = "''";
    for (const std::size_t place : places)
        digits += " || CASE WHEN " + table.column(summary.fields[place].field) +
                  " IS NULL THEN '1' ELSE '0' END";
    return digits;
}

MissingPatterns countPatterns(const ComponentQueries& queries, const InputTable& table,
                              const DataSummary& summary, const std::vector<std::size_t>& places)
{
    duck::Result rows = queries.run(
        "SELECT p, n, f, count(*) OVER () FROM (SELECT " + patternOf(table, summary, places) +
        " AS p, count(*) AS n, CAST(sum(" + InputTable::kWeight + ") AS DOUBLE) AS f FROM " +
        table.name() + " GROUP BY p) ORDER BY n DESC, p LIMIT " + std::to_string(kMostListed));
    MissingPatterns patterns;
    for (std::size_t row = 0; row < rows.rows(); ++row) {
        MissingPattern& pattern = patterns.listed.emplace_back();
        const std::string digits = rows.text(0, row);
        for (std::size_t i = 0; i < places.size(); ++i)
            if (digits.at(i) == kMissing)
                pattern.fields.push_back(places[i]);
        pattern.records = rows.integer(1, row);
        pattern.weight = rows.real(2, row).value_or(0);
        patterns.count = rows.integer(3, row);
    }
    return patterns;
}

} // namespace

bool canCountPatterns(const DataSummary& summary)
{
    return incompleteFields(summary).size() <= kMostPatternFields;
}

void fillMissingPatterns(const ComponentQueries& queries, const InputTable& table,
                         const std::string& partName, DataSummary& summary)
{
    const std::vector<std::size_t> places = incompleteFields(summary);
    if (places.size() > kMostPatternFields)
        return;
    forFieldSets(queries, table, partName, fieldsOf(summary), {places},
                 [&](const InputTable& part, std::size_t) {
                     summary.missingPatterns = countPatterns(queries, part, summary, places);
                 });
}

} // namespace EmbeddedHV
