#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "VexaFormat.h"

/// Formats of dates, times, months and weekdays.
bool isDateFormat(const VEXA_Format& format);

/// A moment, a duration, a month or a weekday in such a format, at most as wide as it says: without
/// decimals, seconds or the century if it has to be; asterisks for what does not fit or is no date.
std::string dateText(double value, const VEXA_Format& format);

/// The value of such a text; nothing if it is none.
std::optional<double> readDate(std::string_view text, const VEXA_Format& format);
