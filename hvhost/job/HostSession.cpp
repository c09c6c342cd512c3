#include "hvhost/job/HostSession.h"

#include <thread>
#include <utility>

#include "CommonBlocks.h"
#include "EngineException.h"
#include "EnginePreload.h"
#include "JNIException.h"
#include "JobText.h"
#include "Journal.h"
#include "TnOutput.h"
#include "VexaJVM.h"
#include "VexaJVMError.h"
#include "datafile/StartedThread.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/CommandLog.h"
#include "hvhost/base/EngineChoice.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/UserMessages.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunner.h"
#include "runner/StatHVServiceManager.h"
#include "support/HVStatTracer.h"
#include "support/Tracing.h"

namespace {

/// Opens the engine's database while the Java virtual machine starts.
class PreloadThread
{
public:
    PreloadThread()
        : _thread(datafile::startedThread("opens the engine's database", &EmbeddedHV::preload))
    {
    }
    ~PreloadThread() { _thread.join(); }
    PreloadThread(const PreloadThread&) = delete;
    PreloadThread& operator=(const PreloadThread&) = delete;

private:
    std::thread _thread;
};

/// Converts the engine's exceptions, which are not std::exception, to a CommandFault. `status` is
/// the exit status for EmbeddedHV::Exception.
template <class Work>
void callEngine(ExitStatus status, Work work)
{
    try {
        work();
    } catch (const EmbeddedHV::Exception& error) {
        throw CommandFault(status, error.getMessage());
    } catch (const EmbeddedHV::JavaException& error) {
        throw CommandFault(ExitStatus::JobFailed, error.getMessage(), {}, error.getTrace());
    }
}

/// How many warnings of one kind are printed.
constexpr int kWarningsOfOneKind = 10;

/// The client of a cluster is much Java code that each process runs from the start, so it pays to
/// compile it early. The embedded engine needs little Java code.
constexpr const char* kCompileEarly = "-XX:CompileThresholdScaling=1";

std::unique_ptr<HVRunner> startRunner(TnProcedure* procedure, bool onCluster)
{
    const PreloadThread preload;
    if (onCluster)
        VexaJVM::GetInstance()->AddOption(kCompileEarly);
    try {
        return std::make_unique<HVRunner>(procedure);
    } catch (const VexaJVMError& error) {
        throw CommandFault(ExitStatus::Engine, error.what(), kJavaHint);
    }
}

} // namespace

HostSession::HostSession(const std::string& command, const CommonOptions& options,
                         const InterruptWatch& watch, ProcedureDataSource* data)
    : _options(options), _watch(watch),
      _procedure(std::make_unique<TnProcedure>("hvhost " + command, data)),
      _runner(startRunner(_procedure.get(), !options.engine.empty())), _command(command),
      _progress(options.quiet ? "never" : options.progress, "hvhost " + command)
{
    checkTrails();
    chooseEngine(_options);
    _watch.check();
}

HostSession::~HostSession()
{
    _runner.reset();
    StatHVServiceManager::shutdown();
}

/// A user who asks for a log or a trace should know at once if it cannot be written.
void HostSession::checkTrails() const
{
    checkLog(_options.logFile);
    if (!_options.traceDirectory.empty() && !HVTracer()->canTrace())
        throw CommandFault(ExitStatus::JobFailed,
                           _options.traceDirectory + ": no trace can be written in this folder",
                           "it must be a folder that may be written to, or one that can be made");
}

void HostSession::giveUpSettings(const Dataset& dataset)
{
    ProcedureDataSource source;
    source.SetDataset(&dataset.source());
    // The host's settings count columns from 1. 0 means none.
    pvGetCmnGlb()->weight = dataset.weight() + 1;
    pvGetCmnGlb()->split = dataset.split().empty() ? 0 : dataset.split().front() + 1;
    _runner->prepareActiveDS(source, true, false);
}

void HostSession::run(const std::string& jobText, const JobOrigin& origin, HVStatDataIterator* rows)
{
    run(jobText, origin,
        rows ? std::vector<HVStatDataIterator*>{rows} : std::vector<HVStatDataIterator*>());
}

void HostSession::run(const std::string& jobText, const JobOrigin& origin,
                      const std::vector<HVStatDataIterator*>& rows)
{
    log("job: " + EmbeddedHV::withoutSecrets(jobText));
    observed([&] { execute(jobText, rows); });
    _runner->displayAllMessages(false, false);
    checkOutcome(jobText, origin);
}

void HostSession::perform(const std::function<bool()>& work, const JobOrigin& origin)
{
    bool done = false;
    observed([&] {
        callEngine(ExitStatus::Engine, [&] {
            try {
                done = work();
            } catch (const JNIException& error) {
                throw CommandFault(ExitStatus::JobFailed,
                                   "the job cannot be composed: " + error.message(), {},
                                   error.trace());
            }
        });
    });
    checkOutcome({}, origin);
    if (!done)
        throw CommandFault(ExitStatus::JobFailed, "the job left no result");
}

/// Runs the work and shows its progress.
void HostSession::observed(const std::function<void()>& work)
{
    if (_partBegin == 0)
        _progress.restart();
    HostJournal::instance().setObserver([this](const HostJournal::Entry& entry) {
        if (entry.kind == HostJournal::Kind::Progress)
            _progress.show(_partBegin + entry.number * (_partEnd - _partBegin));
    });
    const auto quiet = [](ProgressLine* progress) {
        HostJournal::instance().setObserver({});
        progress->clear();
    };
    const std::unique_ptr<ProgressLine, decltype(quiet)> watched(&_progress, quiet);
    work();
}

void HostSession::showPart(double begin, double end)
{
    _partBegin = begin;
    _partEnd = end;
}

void HostSession::execute(const std::string& jobText, const std::vector<HVStatDataIterator*>& rows)
{
    callEngine(ExitStatus::Engine, [&] {
        _runner->prepareHVLJob(jobText);
        for (HVStatDataIterator* const iterator : rows)
            _runner->addInputIterator(iterator);
    });
    _watch.check();
    callEngine(ExitStatus::JobFailed, [&] { _runner->execute(); });
}

/// Prints the messages of the job and throws its error.
void HostSession::checkOutcome(const std::string& jobText, const JobOrigin& origin)
{
    EngineFault fault;
    const bool failed =
        _runner->getProgressListener()->hasError(fault.id, fault.text, fault.detail);
    printMessages(origin, fault.text);
    // A stop that comes after the job has succeeded has no effect, because the output exists.
    if (_runner->getProgressListener()->getState() != HVProgressListener::Succeeded)
        _watch.check();
    if (!failed)
        return;
    CommandFault worded = wordFault(fault, jobText, origin);
    // The engine's syntax error quotes the text, which may be a password.
    const bool isSyntax = isSyntaxFault(fault);
    if (isSyntax)
        worded.setLogText("the job text has a syntax error");
    log("failed: " + (isSyntax ? fault.id + " " + worded.logText() : logText(fault)));
    throw worded;
}

/// Prints the warnings. For a split group, the error of the job is also among them, after the label
/// of the group. It is skipped here, because it is reported separately.
void HostSession::printMessages(const JobOrigin& origin, const std::string& error)
{
    for (const HostJournal::Entry& entry :
         HostJournal::instance().entries(HostJournal::Kind::Error)) {
        if (entry.level != kLevelWarning || (!error.empty() && entry.text.ends_with(error)))
            continue;
        const std::string detail = _runner->getMessageDetail(entry.text);
        warnOfKind(messageKind(entry.text, detail), wordMessage(entry.text, detail, origin));
    }
    HostJournal::instance().clear();
    for (auto& [name, kind] : _kinds)
        if (const int hidden = std::exchange(kind.hidden, 0); hidden > 0 && !_options.quiet)
            printMessage("hvhost: warning: " + std::to_string(hidden) +
                         " more warnings like this one: " + kind.example +
                         "\n--verbose shows them");
}

/// Prints a warning, unless many of its kind were printed before. The log has all.
void HostSession::warnOfKind(const std::string& name, const std::string& text)
{
    WarningKind& kind = _kinds[name];
    kind.example = text;
    if (_options.verbose || kind.printed < kWarningsOfOneKind) {
        ++kind.printed;
        warn(text);
        return;
    }
    ++kind.hidden;
    ++_warnings;
    log("warning: " + text);
}

void HostSession::note(const std::string& text) const
{
    log(text);
    if (_options.verbose)
        printMessage("hvhost: " + text);
}

void HostSession::introduce(const InputFile& input)
{
    for (const std::string& text : input.notes())
        note(text);
    for (const std::string& text : input.doubts())
        warn(text);
}

void HostSession::warn(const std::string& text)
{
    ++_warnings;
    log("warning: " + text);
    if (!_options.quiet)
        printMessage("hvhost: warning: " + text);
}

void HostSession::countShownWarnings()
{
    for (const HostJournal::Entry& entry :
         HostJournal::instance().entries(HostJournal::Kind::Error))
        if (entry.level >= kLevelWarning) {
            ++_warnings;
            log("warning: " + entry.text);
        }
    HostJournal::instance().clear();
}

void HostSession::finish()
{
    printMessages({}, {});
    if (_options.strict && _warnings > 0)
        throw CommandFault(ExitStatus::Warnings, "done, with warnings");
    log("done");
}

void HostSession::log(const std::string& line) const
{
    appendToLog(_options.logFile, line);
}
