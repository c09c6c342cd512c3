#include "CFAppHost.h"
#include "data/HVRawDataIterator.h"
#include "runner/ExecutionScope.h"
#include "support/Tracing.h"
#include "tcm/HVInteractiveTSR.h"
#include "tcm/RecordFile.h"
#include "tcm/TemporalJobText.h"

// Fields of texts as points of time.

namespace {

/// A point of time, a day, or a time of the first day of 1970. The field's name goes in as it is.
std::string GetToTimestampLambda(const std::string& timeField)
{
    return "val toTS = ctx => x => (\"" + timeField + "\", toTimestamp(x." + timeField +
           ", \"yyyy-MM-dd HH:mm:ss\", \"yyyy-MM-dd\", \"HH:mm:ss\", \"" +
           CFAppHost::getInstance()->getTimeLocale() + "\", date(1970,1,1)))";
}

std::string conversionJob(const std::string& reader, const std::string& timeField,
                          const RecordFile& output)
{
    return reader + GetToTimestampLambda(timeField) + "\n" + writerLine(output) +
           "read(readerConf)->reclassifyField(_,toTS)->write(writerConf)";
}

void prepareConversion(HVRunner& runner, const std::string& job)
{
    runner.prepareHVLJob(job);
    traceHVLFile(job, "TCM_API", "TimeStrConversion");
}

} // namespace

bool HVInteractiveTSR::ConvertTimeStr(const std::string& timeField, HVRawDataIterator& iterator,
                                      const RecordFile& output)
{
    const ExecutionScope execution(runner());
    prepareConversion(runner(), conversionJob(readerLine(iterator), timeField, output));
    runner().addInputIterator(&iterator);
    bool isConverted = tryRunHV(runner());
    // Whoever cancelled the rows wants to hear no more of them.
    if (iterator.GetCancelStatus())
        isConverted = false;
    else
        runner().displayAllMessages(true, true);
    runner().cleanExecution();
    return isConverted;
}

bool HVInteractiveTSR::ConvertTimeStr(const std::string& timeField, const RecordFile& input,
                                      const RecordFile& output)
{
    const ExecutionScope execution(runner());
    prepareConversion(runner(), conversionJob(readerLine(input), timeField, output));
    const bool isConverted = tryRunHV(runner());
    runner().displayAllMessages(true, true);
    runner().cleanExecution();
    return isConverted;
}
