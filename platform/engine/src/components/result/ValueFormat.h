#pragma once

#include <cstddef>

#include "CFField.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// A double has no more decimals that tell anything.
inline constexpr std::size_t kMostDecimals = 15;

/// A number as it is written: whole ones without a point, and null for what JSON cannot write.
Json numberJson(double value);
/// The format of plain numbers, shown with so many decimals.
Json numberFormat(int decimals);
/// How values of the field are shown: a date or a time by its pattern, a number with so many
/// decimals and with the dress that the host gives it (grouping, currency, percent).
Json valueFormat(const CFField& field, int decimals);
/// The format of a field in the data model of a result: names, width and decimals.
Json fieldFormat(const CFField& field);
/// The decimals that the field is shown with; nothing if neither format nor storage says so.
std::optional<int> decimalsOf(const CFField& field);

} // namespace EmbeddedHV
