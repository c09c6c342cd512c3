#include "hvhost/combine/Join.h"

#include <iostream>
#include <optional>
#include <sstream>

#include "base/NumberText.h"
#include "bridge/JNIHvlProgram.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/base/UserMessages.h"
#include "hvhost/combine/CombinedInputs.h"
#include "hvhost/combine/JoinKeys.h"
#include "hvhost/combine/JoinedRecords.h"
#include "hvhost/combine/KeyReport.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/FieldTypes.h"
#include "hvhost/input/OutputFile.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/show/OutputShown.h"
#include "hvhost/show/ResultWords.h"
#include "hvhost/show/ShownResult.h"
#include "hvhost/show/TextTable.h"

namespace {

/// The number of keys without a partner that the message names.
constexpr long long kNamedKeys = 5;

std::string countedKeys(double count)
{
    return counted(count, "^1 key", "^1 keys");
}

std::string countedRecords(double count)
{
    return counted(count, "^1 record", "^1 records");
}

std::string namedKey(const ResultTable::Row& row)
{
    std::string text;
    for (std::size_t i = 0; i + 1 < row.size(); ++i)
        text += (i == 0 ? "" : " | ") + row[i].value_or(word("(missing)"));
    return text;
}

void tellUnmatched(const KeyReport::Unmatched& side, const std::string& name)
{
    if (side.keys == 0)
        return;
    std::string text;
    long long named = 0;
    for (const ResultTable::Row& row : side.shown.rows) {
        if (named == kNamedKeys)
            break;
        text += (named++ == 0 ? "" : ", ") + namedKey(row);
    }
    printMessage("hvhost: " + sentence("only in ^1: ^2, ^3: ^4",
                                       {name, countedKeys(static_cast<double>(side.keys)),
                                        countedRecords(side.records),
                                        text + (side.keys > named ? ", ..." : "")}));
}

void tellMatched(const KeyReport::Matched& matched, const CombinedInputs& inputs, bool joins)
{
    printMessage("hvhost: " + sentence("in both files: ^1", {countedKeys(matched.keys)}));
    if (matched.repeatedKeys > 0 && joins)
        printMessage("hvhost: " + sentence("^1 repeats ^2: ^3 of ^4 became ^5",
                                           {inputs.name(1), countedKeys(matched.repeatedKeys),
                                            countedRecords(matched.repeatedRecords), inputs.name(0),
                                            base::shortestNumber(matched.repeatedRows)}));
}

void refuseStreams(const JoinOptions& options)
{
    if (options.report == kStandardStream && options.output.path == kStandardStream)
        throw CommandFault(ExitStatus::Usage,
                           "--report -: the records go to standard output already");
}

/// One table of both sides. Its columns have the names of the left keys.
ResultTable tableOf(const KeyReport& report)
{
    ResultTable table;
    table.columns.push_back({.name = "side", .hasWords = true});
    for (const ResultTable::Column& column : report.left().shown.columns)
        table.columns.push_back(column);
    for (std::size_t key = 1; key + 1 < table.columns.size(); ++key)
        table.columns[key].isField = true;
    table.keyCount = table.columns.size() - 1;
    const auto add = [&](const char* side, const KeyReport::Unmatched& unmatched) {
        for (ResultTable::Row row : unmatched.shown.rows) {
            row.insert(row.begin(), side);
            table.rows.push_back(std::move(row));
        }
    };
    add("left", report.left());
    add("right", report.right());
    return table;
}

void deliverReport(const KeyReport& report, const std::string& path, const ShownResult& result)
{
    const std::string form = formOf("", path, {"csv", "json"});
    std::ostringstream text;
    const ResultTable table = tableOf(report);
    printTable(form == "text" ? inWords(table) : table, {form, textForm({}, form, result.isFile())},
               text);
    result.deliver(text.str());
}

/// The type of a key without values means nothing, so it gets that of the other key.
void adaptTypes(const CombinedInputs& inputs, const std::vector<JoinKey>& keys, CombinedInput& left,
                CombinedInput& right)
{
    for (const JoinKey& key : keys) {
        const CFField::StorageType ofLeft = inputs.storage(0, key.leftColumn);
        const CFField::StorageType ofRight = inputs.storage(1, key.rightColumn);
        if (areComparable(ofLeft, ofRight))
            continue;
        if (inputs.hasValues(0, key.leftColumn))
            right.retype(key.right, ofLeft);
        else
            left.retype(key.left, ofRight);
    }
}

} // namespace

void join(const JoinOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const CombinedInputs inputs(options, {"left", "right"}, watch);
    refuseStreams(options);
    const std::vector<JoinKey> keys = joinKeys(options.on, inputs);
    const OutputFile output(options.output, FileOptions::Offered, watch);
    std::optional<ShownResult> reportFile;
    if (!options.report.empty())
        reportFile.emplace(options.report, options.output.force, watch);
    HostSession session("join", common, watch);
    JNIHvlProgram program;
    CombinedInput left(program, inputs, 0);
    CombinedInput right(program, inputs, 1);
    adaptTypes(inputs, keys, left, right);
    if (inputs.dataset(0).weight() >= 0)
        right.dropWeight(inputs.dataset(1));
    HVLFunction& leftRecords = *left.last();
    HVLFunction& rightRecords = *right.last();
    KeyReport report(program, leftRecords, rightRecords, keys);
    JoinedRecords joined(program, leftRecords, rightRecords, inputs, keys, options.how);
    RecordChain records(program, *joined.last(), RecordNames(joined.names(), options.records),
                        options.records);
    const std::string job = writingJob(program, *records.last(), output, report.statements());
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    inputs.warnOfMissing(session);
    JobOrigin origin = inputs.origin();
    origin.outputs = output.origins();
    for (const JobOrigin::File& file : report.origins())
        origin.outputs.push_back(file);
    origin.expressions = records.expressions();
    session.run(job, origin, inputs.rows());
    report.read(session.runner(), reportFile ? -1 : kNamedKeys);
    output.deliver();
    if (reportFile)
        deliverReport(report, options.report, *reportFile);
    if (!common.quiet) {
        tellMatched(report.matched(), inputs, options.how != "anti");
        tellUnmatched(report.left(), inputs.name(0));
        tellUnmatched(report.right(), inputs.name(1));
    }
    inputs.finish();
    session.finish();
}
