#include "data/HVRawDataIterator.h"
#include "runner/ExecutionScope.h"
#include "support/Tracing.h"
#include "tcm/HVInteractiveTSR.h"
#include "tcm/TemporalJobText.h"
#include "tcm/TimeConversion.h"

// Fields of texts as points of time.

namespace {

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
    prepareConversion(runner(), timeConversionJob(readerLine(iterator), timeField, output));
    runner().addInputIterator(&iterator);
    bool isConverted = tryRunHV(runner());
    // No messages after the rows were cancelled.
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
    prepareConversion(runner(), timeConversionJob(readerLine(input), timeField, output));
    const bool isConverted = tryRunHV(runner());
    runner().displayAllMessages(true, true);
    runner().cleanExecution();
    return isConverted;
}
