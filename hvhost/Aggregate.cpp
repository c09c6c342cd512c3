#include <iostream>
#include <optional>
#include <sstream>

#include "CommandFault.h"
#include "Commands.h"
#include "DataFile.h"
#include "Dataset.h"
#include "FaultWording.h"
#include "HostSession.h"
#include "InterruptWatch.h"
#include "ReadableFile.h"
#include "RecordChain.h"
#include "ResultTable.h"
#include "StandardStreams.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLWrite.h"
#include "runner/HVRunner.h"
#include "support/Conversions.h"
#include "support/HVSimpleFile.h"

namespace {

constexpr const char* kStatisticHint =
    "for example --stat mean:price, --stat p90:price:high, --stat count";

/// FUNCTION:FIELD[:NAME] in its three parts.
struct Statistic
{
    std::string function;
    std::string field;
    std::string name;
};

Statistic splitStatistic(const std::string& text)
{
    const std::size_t first = text.find(':');
    if (first == std::string::npos)
        return {text, {}, {}};
    const std::size_t second = text.find(':', first + 1);
    Statistic result{text.substr(0, first), text.substr(first + 1, second - first - 1), {}};
    if (second != std::string::npos)
        result.name = text.substr(second + 1);
    return result;
}

/// As in p90; what is wrong with the number is told later, in words.
bool isPercentile(const std::string& function)
{
    return function.size() > 1 && function.front() == 'p' &&
           function.find_first_not_of("0123456789", 1) == std::string::npos;
}

/// The builder takes what it is given without a word, so faults are found here.
void addStatistic(HVLAggregate& aggregates, const std::string& text)
{
    const Statistic statistic = splitStatistic(text);
    if (statistic.field.empty() && statistic.function != "count")
        throw CommandFault(ExitStatus::Usage, "--stat " + text + ": a field is missing",
                           kStatisticHint);
    if (!isPercentile(statistic.function)) {
        const bool counted = statistic.field.empty() && statistic.name.empty();
        aggregates.AddAggregate(statistic.function, statistic.field,
                                counted ? "count" : statistic.name);
        return;
    }
    const int centile = String2Integer(statistic.function.substr(1));
    if (centile < 1 || centile > 100)
        throw CommandFault(ExitStatus::Usage, "--stat " + text + ": a percentile is 1 to 100",
                           kStatisticHint);
    aggregates.AddPercentileAggregate(
        centile, statistic.field,
        statistic.name.empty() ? statistic.function + "_" + statistic.field : statistic.name);
}

void showResult(HostSession& session, const std::string& fileName, const AggregateOptions& options,
                const InterruptWatch& watch)
{
    EmbeddedHV::RowDataIterator* const rows = session.runner().getOutputIterator(fileName);
    if (rows == nullptr)
        throw CommandFault(ExitStatus::JobFailed, "the job's result cannot be read");
    std::ostringstream text;
    printTable(readTable(*rows, options.by.size()), options.format, text);
    printToStandardOutput(text.str(), watch);
}

/// Whether the result is shown, not written. An option that would then do nothing is refused:
/// nobody should believe that it did something.
bool isShown(const AggregateOptions& options)
{
    const OutputOptions& output = options.output;
    const bool shown =
        output.path.empty() || (output.path == kStandardStream && output.kind.empty());
    if (!shown && !options.format.empty())
        throw CommandFault(ExitStatus::Usage, "--format is for a result that is shown",
                           "--to tells the kind of a file");
    const bool written = !output.kind.empty() || !output.password.empty() ||
                         !output.passwordFile.empty() || !output.dataModel.empty();
    if (shown && written)
        throw CommandFault(ExitStatus::Usage, "the options of an output need an output",
                           "name the file to write, or - with --to for standard output");
    return shown;
}

/// Adds the keys and the statistics, and tells which option each comes from.
std::vector<std::string> addAggregates(HVLAggregate& aggregates, const AggregateOptions& options)
{
    std::vector<std::string> origins;
    for (const std::string& field : options.by) {
        aggregates.AddAggregate("key", field, field);
        origins.push_back("--by " + field);
    }
    for (const std::string& statistic : options.statistics) {
        addStatistic(aggregates, statistic);
        origins.push_back("--stat " + statistic);
    }
    return origins;
}

} // namespace

void aggregate(const AggregateOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const bool shown = isShown(options);
    const InputFile input(options.input, FileOptions::Offered, watch);
    std::optional<OutputFile> output;
    if (!shown)
        output.emplace(options.output, FileOptions::Offered, watch);
    HostSession session("aggregate", common, watch);
    JNIHvlProgram program;
    RecordChain records(program, input, options.records);
    HVLAggregate aggregates(&program);
    JobOrigin origin = input.origin();
    origin.expressions = records.expressions();
    origin.aggregates = addAggregates(aggregates, options);
    aggregates.AddPredFunction(records.last());
    const HVSimpleFile scratch("aggregate.hvbf", true, true);
    HVLWrite write(&program);
    if (output) {
        output->configure(write);
        origin.outputs = output->origins();
    } else {
        write.WriteHVBF(scratch.GetFileName());
        origin.outputs = {{nativePath(scratch.GetGenericPath()), kTemporaryFile}};
    }
    write.AddPredFunction(&aggregates);

    const std::string job = generateJob(program, write);
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    if (input.dataset())
        session.giveUpSettings(*input.dataset());
    session.run(job, origin, input.rows());
    if (output)
        output->deliver();
    else
        showResult(session, scratch.GetFileName(), options, watch);
    input.finish();
    session.finish();
}
