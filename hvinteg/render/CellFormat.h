#pragma once

#include <string>

#include "VexaFormat.h"
#include "bridge/JsonValue.h"

/// Formats of numbers in results, and conversions to the host's scale.
namespace CellFormat {

/// The type of noFormat.
inline constexpr std::uint8_t kNoType = 255;
/// Maximum width of a number.
inline constexpr std::uint16_t kWidth = 40;

inline constexpr VEXA_Format noFormat{kWidth, kNoType, 0};
inline constexpr VEXA_Format plainNumber{kWidth, kFormatGeneral, 0};
inline constexpr VEXA_Format generalNumber{kWidth, kFormatGeneral, 3};
inline constexpr VEXA_Format yearFirstDate{kWidth, kFormatDateYearFirst, 0};

/// The format that a JSON object describes; noFormat for another value.
VEXA_Format formatOf(const JsonValue& object);
/// Whether the object marks its number as infinite.
bool isInfinite(const JsonValue& object);

/// Converts a value of a date format to the host's scale. The host counts seconds from its own
/// first day; results count from 1970, in seconds or days. Other values are unchanged, also
/// weekdays and months that are given by number.
double toHostDate(double value, const VEXA_Format& format, bool valueIsSeconds);

/// The text that the host shows for the value, without surrounding blanks. UTF-8.
std::string textOf(double value, const VEXA_Format& format);

} // namespace CellFormat
