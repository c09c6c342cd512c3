#pragma once

#include <cstddef>

#include "CFField.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// More decimals of a double are not significant.
inline constexpr std::size_t kMostDecimals = 15;

/// A number in JSON: whole numbers without a decimal point, null for infinite and not-a-number.
Json numberJson(double value);
/// The format of plain numbers with this number of decimals.
Json numberFormat(int decimals);
/// The format of the field's values: dates and times by their pattern; numbers with this number of
/// decimals and the host's grouping, currency or percent sign.
Json valueFormat(const CFField& field, int decimals);
/// The format of a field in the data model of a result: name, width and decimals.
Json fieldFormat(const CFField& field);
/// The number of decimals of the field; empty if neither its format nor its storage determines it.
std::optional<int> decimalsOf(const CFField& field);

} // namespace EmbeddedHV
