#include "data/StorageOfFormat.h"

#include "VexaFormat.h"

CFField::StorageType storageOfFormatType(std::uint8_t formatType)
{
    switch (formatType) {
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
