#include "hvhost/aggregate/Aggregate.h"

#include <iostream>
#include <optional>
#include <sstream>

#include "bridge/JNIHvlProgram.h"
#include "hvhost/aggregate/TotalsChain.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/OutputFile.h"
#include "hvhost/input/TextReasonFault.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/job/RecordChain.h"
#include "hvhost/job/RecordNames.h"
#include "hvhost/show/ResultTable.h"
#include "hvhost/show/TextTable.h"
#include "hvl/HVLWrite.h"
#include "runner/HVRunner.h"
#include "support/HVSimpleFile.h"

namespace {

void showResult(HostSession& session, const std::string& fileName, const AggregateOptions& options,
                const TableLook& look, const InterruptWatch& watch)
{
    EmbeddedHV::RowDataIterator* const rows = session.runner().getOutputIterator(fileName);
    if (rows == nullptr)
        throw CommandFault(ExitStatus::JobFailed, "the job's result cannot be read");
    std::ostringstream text;
    ResultTable table = readTable(*rows, options.by.size());
    if (options.totals && look.form == "text")
        showTotals(table);
    printTable(table, look, text);
    printToStandardOutput(text.str(), watch);
    if (const std::string rounded = roundedColumnsText(table.columns); !rounded.empty())
        session.warn(rounded + "; an output file has all digits");
}

/// Whether the result is shown instead of written. Rejects options that would have no effect, so
/// that the user does not rely on them.
bool isShown(const AggregateOptions& options)
{
    const OutputOptions& output = options.output;
    const bool shown =
        output.path.empty() || (output.path == kStandardStream && output.kind.empty());
    if (!shown && !options.format.empty())
        throw CommandFault(ExitStatus::Usage, "--format is for a result that is shown",
                           "--to sets the kind of a file");
    if (!shown && (options.text.width > 0 || options.text.groupsDigits))
        throw CommandFault(ExitStatus::Usage,
                           std::string(options.text.width > 0 ? "--width" : "--group-digits") +
                               " is for a result that is shown");
    const bool written = !output.kind.empty() || !output.password.empty() ||
                         !output.passwordFile.empty() || !output.dataModel.empty();
    if (shown && written)
        throw CommandFault(ExitStatus::Usage, "the options of an output need an output",
                           "name the file to write, or - with --to for standard output");
    return shown;
}

/// The field with the weight of a record; empty: each record counts once.
std::string weightOf(const AggregateOptions& options, const Dataset* dataset)
{
    if (options.unweighted || dataset == nullptr || dataset->weight() < 0)
        return {};
    return dataset->nameOf(dataset->weight());
}

} // namespace

void aggregate(const AggregateOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const bool shown = isShown(options);
    const std::string form = options.format.empty() ? "text" : options.format;
    const TableLook look{form, textForm(options.text, form)};
    const InputOptions reading = limitedReading(options.input, options.records);
    const InputFile input(reading, FileOptions::Offered, watch, Reader::Either);
    std::optional<OutputFile> output;
    if (!shown)
        output.emplace(options.output, FileOptions::Offered, watch);
    HostSession session("aggregate", common, watch);
    JNIHvlProgram program;
    RecordChain records(program, input, options.records);
    TotalsChain aggregates(program, *records.last(), RecordNames(input, options.records),
                           options.by, options.statistics, weightOf(options, input.dataset()),
                           options.totals);
    JobOrigin origin = input.origin();
    origin.expressions = records.expressions();
    origin.aggregates = aggregates.origins();
    origin.composed = aggregates.composed();
    const HVSimpleFile scratch("aggregate.hvbf", true, true);
    HVLWrite write(&program);
    if (output) {
        output->configure(write);
        origin.outputs = output->origins();
    } else {
        write.WriteHVBF(scratch.GetFileName());
        origin.outputs = {{nativePath(scratch.GetGenericPath()), kTemporaryFile}};
    }
    write.AddPredFunction(aggregates.last());

    const std::string job = generateJob(program, write);
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    if (input.dataset())
        session.giveUpSettings(*input.dataset());
    session.introduce(input);
    try {
        session.run(job, origin, input.rows());
    } catch (const CommandFault& fault) {
        throw withTextReason(fault, input);
    }
    if (output)
        output->deliver();
    else
        showResult(session, scratch.GetFileName(), options, look, watch);
    input.finish();
    session.finish();
}
