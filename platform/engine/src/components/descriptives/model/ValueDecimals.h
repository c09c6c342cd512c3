#pragma once

#include "components/descriptives/model/FieldSummary.h"

namespace EmbeddedHV {

/// Digits of the standard deviation that are always visible, however small it is.
inline constexpr int kDigitsShown = 4;

/// The number of decimals that shows the first digits of a number.
int decimalsFor(double value);
/// The decimals of the field's own format, else enough decimals to show its spread.
int decimalsOfValues(const FieldSummary& field);
/// The decimals of statistics that are on the scale of the values, but not values themselves.
int decimalsBetweenValues(const FieldSummary& field);

} // namespace EmbeddedHV
