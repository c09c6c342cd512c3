#include "hvhost/job/RecordChain.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <nlohmann/json.hpp>

#include "JNIException.h"
#include "bridge/JNIHvlProgram.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/input/OutputFile.h"
#include "hvhost/job/EngineStep.h"
#include "hvhost/job/RecordNames.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLFilterFields.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLUpdateDataModel.h"
#include "hvl/HVLWrite.h"
#include "support/Tracing.h"

namespace {

/// Escapes an expression, so that it is a pattern without arguments.
std::string patternOf(const std::string& expression)
{
    std::string pattern;
    for (const char character : expression)
        pattern.append(character == '%' ? 2 : 1, character);
    return pattern;
}

/// FIELD, FIELD:asc or FIELD:desc.
nlohmann::json sortEntry(const std::string& text, const RecordNames& names)
{
    constexpr std::string_view down = ":desc";
    constexpr std::string_view up = ":asc";
    const bool descends = text.ends_with(down);
    const std::size_t suffix = descends ? down.size() : text.ends_with(up) ? up.size() : 0;
    const std::string name = text.substr(0, text.size() - suffix);
    return {{"name", names.own(name, "--sort " + text)}, {"descending", descends}};
}

nlohmann::json sortFields(const RecordNames& names, const RecordOptions& options)
{
    nlohmann::json fields = nlohmann::json::array();
    for (const std::string& text : options.sort)
        fields.push_back(sortEntry(text, names));
    for (const std::string& name : names.own(options.topBy, "--by"))
        fields.push_back({{"name", name}, {"descending", true}});
    return fields;
}

nlohmann::json sampleSettings(const RecordOptions& options)
{
    const std::string& size = options.sample;
    nlohmann::json settings{{"seed", options.seed}};
    if (size.ends_with('%'))
        settings["percent"] = std::stod(size);
    else
        settings["count"] = std::stoll(size);
    return settings;
}

/// Without their names, records are equal if all fields that the command keeps are.
nlohmann::json distinctFields(const RecordNames& names, const RecordOptions& options,
                              const std::vector<std::string>& kept)
{
    std::vector<std::string> fields = names.own(options.distinctBy, "--distinct-by");
    if (options.distinct)
        fields = kept;
    return fields.empty() ? nlohmann::json::object() : nlohmann::json{{"fields", fields}};
}

} // namespace

InputOptions limitedReading(const InputOptions& input, const RecordOptions& records)
{
    InputOptions reading = input;
    if (records.limitsReading())
        reading.first = std::min(input.first.value_or(*records.limit), *records.limit);
    return reading;
}

RecordChain::RecordChain(JNIHvlProgram& program, const InputFile& input,
                         const RecordOptions& options)
    : _program(program), _last(nullptr)
{
    read(input);
    RecordOptions remaining = options;
    if (options.limitsReading())
        remaining.limit.reset();
    change(RecordNames(input, options), remaining);
}

RecordChain::RecordChain(JNIHvlProgram& program, HVLFunction& first, const RecordNames& names,
                         const RecordOptions& options)
    : _program(program), _last(&first)
{
    change(names, options);
}

RecordChain::~RecordChain() = default;

/// The file, and metadata that the reading does not provide.
void RecordChain::read(const InputFile& input)
{
    auto read = std::make_unique<HVLRead>(&_program);
    input.configure(*read);
    append(std::move(read));
    auto update = std::make_unique<HVLUpdateDataModel>(&_program);
    input.complete(*update);
    if (update->SizeOfUpdate() > 0)
        append(std::move(update));
}

void RecordChain::change(const RecordNames& names, const RecordOptions& options)
{
    for (const std::string& derivation : options.derivations)
        derive(derivation);
    if (!options.where.empty()) {
        _expressions.push_back({"--where " + options.where, options.where});
        appendExpression().SetFilterRecords(
            _program.createHvlExpression(patternOf(options.where), nullptr));
    }
    _kept = names.own(options.keep, "--keep");
    select(names, options);
    if (_kept.empty())
        return;
    auto keep = std::make_unique<HVLFilterFields>(&_program);
    keep->KeepFieldNames(_kept);
    append(std::move(keep));
}

void RecordChain::select(const RecordNames& names, const RecordOptions& options)
{
    const auto add = [this](const char* step, nlohmann::json settings) {
        append(std::make_unique<EngineStep>(&_program, step, std::move(settings)));
    };
    if (options.distinct || !options.distinctBy.empty())
        add("distinctRecords", distinctFields(names, options, _kept));
    if (!options.sample.empty())
        add("sampleRecords", sampleSettings(options));
    if (!options.sort.empty() || options.top)
        add("sortRecords", {{"fields", sortFields(names, options)}});
    if (options.top)
        add("limitRecords", {{"count", *options.top}});
    if (options.limit)
        add("limitRecords", {{"count", *options.limit}});
}

void RecordChain::append(std::unique_ptr<HVLFunction> step)
{
    step->AddPredFunction(_last);
    _steps.push_back(std::move(step));
    _last = _steps.back().get();
}

HVLExpressionFun& RecordChain::appendExpression()
{
    auto step = std::make_unique<HVLExpressionFun>(&_program);
    HVLExpressionFun& appended = *step;
    append(std::move(step));
    return appended;
}

void RecordChain::derive(const std::string& text)
{
    const Derivation derivation = splitDerivation(text);
    _expressions.push_back({"--derive " + text, derivation.expression});
    appendExpression().SetDeriveField(
        derivation.name, _program.createHvlExpression(patternOf(derivation.expression), nullptr));
}

std::string writingJob(JNIHvlProgram& program, HVLFunction& records, const OutputFile& output,
                       std::vector<HVLFunction*> earlier)
{
    HVLWrite write(&program);
    output.configure(write);
    write.AddPredFunction(&records);
    earlier.push_back(&write);
    return generateJob(program, earlier);
}

std::string generateJob(JNIHvlProgram& program, HVLFunction& last)
{
    return generateJob(program, std::vector<HVLFunction*>{&last});
}

std::string generateJob(JNIHvlProgram& program, const std::vector<HVLFunction*>& statements)
{
    std::string job;
    try {
        for (HVLFunction* const last : statements)
            if (!last->GenerateHVL())
                throw CommandFault(ExitStatus::JobFailed, "the job cannot be composed");
        program.getHvlText(job);
    } catch (const JNIException& error) {
        throw CommandFault(ExitStatus::JobFailed, "the job cannot be composed: " + error.message(),
                           {}, error.trace());
    }
    // Java may drop text when it runs out of memory. A job without statements would count as a
    // success.
    if (job.empty())
        throw CommandFault(ExitStatus::JobFailed, "the job cannot be composed: it has no text");
    traceHVLFile(job, "HvlJobText", "hvhost");
    return job;
}
