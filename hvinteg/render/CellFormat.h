#pragma once

#include <string>

#include "VexaFormat.h"
#include "bridge/JsonValue.h"

/// Formats of numbers in results, and the numbers as the host counts them.
namespace CellFormat {

/// Stands for no format given.
inline constexpr std::uint8_t kNoType = 255;
/// Widest that results show a number.
inline constexpr std::uint16_t kWidth = 40;

inline constexpr VEXA_Format noFormat{kWidth, kNoType, 0};
inline constexpr VEXA_Format plainNumber{kWidth, kFormatGeneral, 0};
inline constexpr VEXA_Format generalNumber{kWidth, kFormatGeneral, 3};
inline constexpr VEXA_Format yearFirstDate{kWidth, kFormatDateYearFirst, 0};

/// The format that a JSON object describes; noFormat for anything else.
VEXA_Format formatOf(const JsonValue& object);
/// Whether that object says that its number is infinite.
bool isInfinite(const JsonValue& object);

/// A value of a date-valued format on the host's scale, which counts seconds from the host's first
/// day; results count from 1970, in seconds or in days. Other values stay as they are, and so do
/// days of the week and months that are given by their number.
double toHostDate(double value, const VEXA_Format& format, bool valueIsSeconds);

/// The value as the host shows it, without blanks around it. UTF-8.
std::string textOf(double value, const VEXA_Format& format);

} // namespace CellFormat
