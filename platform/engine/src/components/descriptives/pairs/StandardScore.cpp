#include "components/descriptives/pairs/StandardScore.h"

#include <cmath>

#include "expression/SqlText.h"

namespace EmbeddedHV {

std::string standardScore(const InputTable& table, const FieldSummary& field, double shift)
{
    const double spread = field.numeric.standardDeviation.value_or(0);
    const double centre = field.numeric.mean.value_or(0) + shift * (spread > 0 ? spread : 1);
    const std::string x = table.column(field.field);
    // A whole number may have more digits than a double.
    const std::string centred = field.field.GetStorage() == CFField::Integer
                                    ? "CAST(CAST(" + x + " AS HUGEINT) - CAST(" +
                                          sqlConstant(std::round(centre)).sql +
                                          " AS HUGEINT) AS DOUBLE)"
                                    : "(" + x + " - " + sqlConstant(centre).sql + ")";
    return spread > 0 ? centred + " / " + sqlConstant(spread).sql : centred;
}

} // namespace EmbeddedHV
