#include <iostream>

#include "Commands.h"
#include "DataFile.h"
#include "HostSession.h"
#include "InterruptWatch.h"
#include "RecordChain.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLFilterFields.h"
#include "hvl/HVLWrite.h"

void convert(const ConvertOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const InputFile input(options.input, FileOptions::Offered, watch);
    const OutputFile output(options.output, FileOptions::Offered, watch);
    HostSession session("convert", common, watch);
    JNIHvlProgram program;
    RecordChain records(program, input, options.records);
    HVLFilterFields keep(&program);
    keep.KeepFieldNames(options.keep);
    keep.AddPredFunction(records.last());
    HVLWrite write(&program);
    output.configure(write);
    write.AddPredFunction(options.keep.empty() ? records.last() : &keep);

    const std::string job = generateJob(program, write);
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    JobOrigin origin = input.origin();
    origin.expressions = records.expressions();
    session.run(job, origin, input.rows());
    output.deliver();
    input.finish();
    session.finish();
}
