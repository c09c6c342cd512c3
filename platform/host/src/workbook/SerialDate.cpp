#include "workbook/SerialDate.h"

#include <cmath>
#include <cstdint>

#include "base/CivilTime.h"

namespace {

constexpr std::int64_t kMillisecondsPerDay = 86'400'000;
constexpr std::int64_t kMicrosecondsPerMillisecond = 1000;
constexpr std::int64_t kFalseLeapDay = 60;
// Days from 1970-01-01.
constexpr std::int64_t kOriginOf1904 = -24107;
constexpr std::int64_t kOriginBeforeLeapDay = -25568;
constexpr std::int64_t kOriginAfterLeapDay = -25569;
constexpr std::int64_t kAfterLastDay = 2932897; // 10000-01-01

/// The day from 1970-01-01; nullopt for a day that does not exist.
std::optional<std::int64_t> dayOf(std::int64_t serial, bool is1904)
{
    if (is1904)
        return serial + kOriginOf1904;
    if (serial == 0 || serial == kFalseLeapDay)
        return std::nullopt;
    return serial + (serial < kFalseLeapDay ? kOriginBeforeLeapDay : kOriginAfterLeapDay);
}

} // namespace

std::optional<CellValue> serialDate(double days, CellFormat format, bool is1904)
{
    if (!(days >= 0 && days < static_cast<double>(kAfterLastDay - kOriginAfterLeapDay)))
        return std::nullopt;
    const double scaled = std::round(days * static_cast<double>(kMillisecondsPerDay));
    const auto milliseconds = static_cast<std::int64_t>(scaled);
    const std::int64_t serial = milliseconds / kMillisecondsPerDay;
    const std::int64_t rest = milliseconds % kMillisecondsPerDay;
    const std::string clock = base::isoClock(rest * kMicrosecondsPerMillisecond);
    if (format == CellFormat::Time && serial == 0)
        return CellValue{clock, datafile::CsvKind::Time};
    const auto day = dayOf(serial, is1904);
    if (!day || *day >= kAfterLastDay)
        return std::nullopt;
    if (format == CellFormat::Date && rest == 0)
        return CellValue{base::isoDate(*day), datafile::CsvKind::Date};
    return CellValue{base::isoDate(*day) + " " + clock, datafile::CsvKind::Timestamp};
}
