#pragma once

#include "CFField.h"
#include "VexaFormat.h"

/// The storage type for values of a format. The host stores dates, times and timestamps as numbers;
/// only the format identifies them. Weekdays and months stay numbers. Any thread.
inline CFField::StorageType storageOfFormat(const VEXA_Format& format)
{
    switch (format.type) {
    case kFormatString:
    case kFormatHexString:
        return CFField::String;
    case kFormatDate:
    case kFormatDateMonthFirst:
    case kFormatDateDayOfYear:
    case kFormatMonthAndYear:
    case kFormatQuarterAndYear:
    case kFormatWeekAndYear:
    case kFormatDateWithDots:
    case kFormatDateYearFirst:
        return CFField::Date;
    case kFormatTime:
    case kFormatTimeWithDays:
    case kFormatTimeMinutesFirst:
        return CFField::Time;
    case kFormatDateTime:
    case kFormatDateTimeYearFirst:
        return CFField::Timestamp;
    default:
        return CFField::Real;
    }
}
