#include "components/descriptives/counts/ZeroInflation.h"

#include <cmath>

#include "components/statistics/Distributions.h"

namespace EmbeddedHV {
namespace {

bool hasCounts(const FieldSummary& field)
{
    return field.field.GetStorage() == CFField::Integer && field.numeric.mean &&
           *field.numeric.mean > 0 && !field.minimum.starts_with('-');
}

std::optional<ZeroInflation> testOf(double zeros, double weight, double mean)
{
    const double share = std::exp(-mean);
    const double difference = zeros / share - weight;
    const double score = difference * difference / (weight * (std::expm1(mean) - mean));
    if (!std::isfinite(score))
        return std::nullopt;
    return ZeroInflation{zeros, weight * share, score, upperChiSquared(score, 1)};
}

} // namespace

void fillZeroInflation(const ComponentQueries& queries, const InputTable& table,
                       DataSummary& summary)
{
    for (FieldSummary& field : summary.fields) {
        if (!hasCounts(field))
            continue;
        const double zeros = queries
                                 .run("SELECT CAST(sum(w) AS DOUBLE) FROM " + table.name() +
                                      " WHERE " + table.column(field.field) + " = 0")
                                 .real(0, 0)
                                 .value_or(0);
        field.zeroInflation = testOf(zeros, field.validWeight, *field.numeric.mean);
    }
}

} // namespace EmbeddedHV
