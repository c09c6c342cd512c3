#include "hvhost/job/Convert.h"

#include <algorithm>
#include <iostream>

#include "bridge/JNIHvlProgram.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/OutputFile.h"
#include "hvhost/job/CopiedMissing.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/job/RecordChain.h"
#include "hvhost/job/RecordNames.h"

namespace {

/// Rejects a --weight that would have no effect, so that the user does not rely on it.
/// `keep` are the names of the fields to keep; empty for all.
void refuseLostWeight(const JobOptions& options, const std::vector<std::string>& keep,
                      const InputFile& input, const OutputFile& output)
{
    const std::string& given = options.input.weight;
    if (given.empty())
        return;
    if (!output.keepsWeight())
        throw CommandFault(ExitStatus::Usage,
                           "--weight " + given + ": a csv file cannot declare a weight",
                           "write another kind of file, or add --out-data-model");
    const std::string name = input.dataset()->nameOf(input.dataset()->weight());
    if (!keep.empty() && std::find(keep.begin(), keep.end(), name) == keep.end())
        throw CommandFault(ExitStatus::Usage, "--weight " + given + ": --keep leaves it out");
}

} // namespace

void convert(const JobOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const InputOptions reading =
        copiedReading(limitedReading(options.input, options.records), options.records);
    const InputFile input(reading, FileOptions::Offered, watch, Reader::Either);
    const OutputFile output(options.output, FileOptions::Offered, watch);
    refuseLostWeight(options,
                     RecordNames(input, options.records).own(options.records.keep, "--keep"), input,
                     output);
    HostSession session("convert", common, watch);
    JNIHvlProgram program;
    RecordChain records(program, input, options.records);
    const std::string job = writingJob(program, *records.last(), output);
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    if (reading.userMissing.empty() && input.declaresMissing())
        session.warn(missingIsLost(options.input.path));
    JobOrigin origin = input.origin();
    origin.outputs = output.origins();
    origin.expressions = records.expressions();
    session.introduce(input);
    session.run(job, origin, input.rows());
    output.deliver();
    input.finish();
    session.finish();
}
