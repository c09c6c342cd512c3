#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "HostExport.h"
#include "VexaFormat.h"

/// The decimal sign of numbers in the host's locale. Any thread.
HOST_API char decimalSign();

/// Formats of dates, times, months and weekdays. Any thread.
HOST_API bool isDateFormat(const VEXA_Format& format);

/// The number of characters from the decimal sign to the end of a formatted number; without a
/// decimal sign, the number of characters after the number. nullopt for scientific notation and
/// dates. Any thread.
HOST_API std::optional<std::size_t> fractionOf(std::string_view text, const VEXA_Format& format);
