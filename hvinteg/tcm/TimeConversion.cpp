#include "tcm/TimeConversion.h"

#include "CFAppHost.h"
#include "tcm/TemporalJobText.h"

/// A point of time, a day, or a time alone, which is one of the first day of 1970.
std::string GetToTimestampLambda(const std::string& timeField)
{
    return "val toTS = ctx => x => (\"" + timeField + "\", toTimestamp(x." + timeField +
           ", \"yyyy-MM-dd HH:mm:ss\", \"yyyy-MM-dd\", \"HH:mm:ss\", \"" +
           CFAppHost::getInstance()->getTimeLocale() + "\", date(1970,1,1)))";
}

std::string timeConversionJob(const std::string& reader, const std::string& timeField,
                              const RecordFile& output)
{
    return reader + GetToTimestampLambda(timeField) + "\n" + writerLine(output) +
           "read(readerConf)->reclassifyField(_,toTS)->write(writerConf)";
}
