#include "hvhost/job/RecordChain.h"

#include "JNIException.h"
#include "bridge/JNIHvlProgram.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/input/DataFile.h"
#include "hvhost/job/RecordNames.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLUpdateDataModel.h"
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

} // namespace

RecordChain::RecordChain(JNIHvlProgram& program, const InputFile& input,
                         const RecordOptions& options)
    : _program(program), _read(std::make_unique<HVLRead>(&program)), _last(_read.get())
{
    input.configure(*_read);
    _update = std::make_unique<HVLUpdateDataModel>(&program);
    input.complete(*_update);
    if (_update->SizeOfUpdate() > 0) {
        _update->AddPredFunction(_last);
        _last = _update.get();
    }
    for (const std::string& derivation : options.derivations)
        derive(derivation);
    if (options.where.empty())
        return;
    _expressions.push_back({"--where " + options.where, options.where});
    append().SetFilterRecords(_program.createHvlExpression(patternOf(options.where), nullptr));
}

RecordChain::~RecordChain() = default;

HVLExpressionFun& RecordChain::append()
{
    _steps.push_back(std::make_unique<HVLExpressionFun>(&_program));
    _steps.back()->AddPredFunction(_last);
    _last = _steps.back().get();
    return *_steps.back();
}

void RecordChain::derive(const std::string& text)
{
    const Derivation derivation = splitDerivation(text);
    _expressions.push_back({"--derive " + text, derivation.expression});
    append().SetDeriveField(
        derivation.name, _program.createHvlExpression(patternOf(derivation.expression), nullptr));
}

std::string generateJob(JNIHvlProgram& program, HVLFunction& last)
{
    std::string job;
    try {
        if (!last.GenerateHVL())
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
