#include "components/descriptives/model/ValueDecimals.h"

#include <algorithm>
#include <cmath>

#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

/// Added to the decimals of the values, for statistics that are not values themselves.
constexpr int kMoreDecimals = 2;

} // namespace

int decimalsFor(double value)
{
    if (!(value > 0) || !std::isfinite(value))
        return 0;
    const double decimals = kDigitsShown - 1 - std::floor(std::log10(value));
    return static_cast<int>(std::clamp(decimals, 0.0, static_cast<double>(kMostDecimals)));
}

int decimalsOfValues(const FieldSummary& field)
{
    if (const auto decimals = decimalsOf(field.field))
        return *decimals;
    const double extent =
        std::max(std::abs(field.least.value_or(0)), std::abs(field.greatest.value_or(0)));
    return decimalsFor(field.numeric.standardDeviation.value_or(extent));
}

int decimalsBetweenValues(const FieldSummary& field)
{
    const int most = static_cast<int>(kMostDecimals);
    return std::max(std::min(decimalsOfValues(field) + kMoreDecimals, most),
                    decimalsFor(field.numeric.standardDeviation.value_or(0)));
}

} // namespace EmbeddedHV
