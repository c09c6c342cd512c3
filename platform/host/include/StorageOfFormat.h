#pragma once

#include "CFField.h"
#include "VexaFormat.h"

/// The kind of column that holds the values of a format. To the host dates, times and timestamps
/// are numbers like any other; only the format tells that they stand for a moment. Weekdays and
/// months stay numbers. Any thread.
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
