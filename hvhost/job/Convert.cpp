#include "hvhost/job/Convert.h"

#include <algorithm>
#include <iostream>

#include "bridge/JNIHvlProgram.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/input/DataFile.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/job/RecordChain.h"
#include "hvhost/job/RecordNames.h"
#include "hvl/HVLFilterFields.h"
#include "hvl/HVLWrite.h"

namespace {

/// Rejects a --weight that would have no effect, so that the user does not rely on it.
/// `keep` are the names of the fields to keep; empty for all.
void refuseLostWeight(const ConvertOptions& options, const std::vector<std::string>& keep,
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

/// A copy keeps the values that its file declares missing. But an expression over the records must
/// not use such a value as a number.
InputOptions readingOf(const ConvertOptions& options)
{
    InputOptions input = options.input;
    const bool isCopy = options.records.where.empty() && options.records.derivations.empty();
    if (input.userMissing.empty() && isCopy)
        input.userMissing = "keep";
    return input;
}

} // namespace

void convert(const ConvertOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const InputOptions reading = readingOf(options);
    const InputFile input(reading, FileOptions::Offered, watch, Reader::Either);
    const OutputFile output(options.output, FileOptions::Offered, watch);
    const std::vector<std::string> kept =
        RecordNames(input, options.records).own(options.keep, "--keep");
    refuseLostWeight(options, kept, input, output);
    HostSession session("convert", common, watch);
    JNIHvlProgram program;
    RecordChain records(program, input, options.records);
    HVLFilterFields keep(&program);
    keep.KeepFieldNames(kept);
    keep.AddPredFunction(records.last());
    HVLWrite write(&program);
    output.configure(write);
    write.AddPredFunction(kept.empty() ? records.last() : &keep);

    const std::string job = generateJob(program, write);
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    if (reading.userMissing.empty() && input.declaresMissing())
        session.warn(options.input.path +
                     ": what it declares missing is written as system-missing; --user-missing "
                     "exclude or keep says what is wanted");
    JobOrigin origin = input.origin();
    origin.outputs = output.origins();
    origin.expressions = records.expressions();
    session.note(input.road());
    session.run(job, origin, input.rows());
    output.deliver();
    input.finish();
    session.finish();
}
