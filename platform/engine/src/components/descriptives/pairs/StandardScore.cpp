#include "components/descriptives/pairs/StandardScore.h"

#include <cmath>

#include "duckdb/DuckDialect.h"

namespace EmbeddedHV {

std::string standardScore(const InputTable& table, const FieldSummary& field, double shift)
{
    const double spread = field.numeric.standardDeviation.value_or(0);
    const double centre = field.numeric.mean.value_or(0) + shift * (spread > 0 ? spread : 1);
    const std::string x = table.column(field.field);
    // A whole number may have more digits than a double.
    const std::string centred = field.field.GetStorage() == CFField::Integer
                                    ? "CAST(CAST(" + x + " AS HUGEINT) - CAST(" +
                                          duckDialect().literal(std::round(centre)) +
                                          " AS HUGEINT) AS DOUBLE)"
                                    : "(" + x + " - " + duckDialect().literal(centre) + ")";
    return spread > 0 ? centred + " / " + duckDialect().literal(spread) : centred;
}

} // namespace EmbeddedHV
