#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "VexaFormat.h"

/// Formats a point in time, duration, month or weekday, at most as wide as the format. Omits
/// decimals, seconds or the century if necessary; asterisks if it does not fit or is invalid.
std::string dateText(double value, const VEXA_Format& format);

/// The value of such a text; nullopt if it is invalid.
std::optional<double> readDate(std::string_view text, const VEXA_Format& format);
