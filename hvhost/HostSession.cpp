#include "HostSession.h"

#include <cstdio>
#include <thread>

#include "CommandFault.h"
#include "CommandLog.h"
#include "EngineException.h"
#include "EnginePreload.h"
#include "FaultWording.h"
#include "InterruptWatch.h"
#include "Journal.h"
#include "ProgressLine.h"
#include "TnOutput.h"
#include "VexaJVMError.h"
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
    PreloadThread() : _thread(&EmbeddedHV::preload) {}
    ~PreloadThread() { _thread.join(); }
    PreloadThread(const PreloadThread&) = delete;
    PreloadThread& operator=(const PreloadThread&) = delete;

private:
    std::thread _thread;
};

std::unique_ptr<HVRunner> startRunner(TnProcedure* procedure)
{
    const PreloadThread preload;
    try {
        return std::make_unique<HVRunner>(procedure);
    } catch (const VexaJVMError& error) {
        throw CommandFault(ExitStatus::Engine, error.what(),
                           "hvhost doctor tells what was found, and what is missing");
    }
}

} // namespace

HostSession::HostSession(const std::string& command, const CommonOptions& options,
                         const InterruptWatch& watch)
    : _options(options), _watch(watch),
      _procedure(std::make_unique<TnProcedure>("hvhost " + command)),
      _runner(startRunner(_procedure.get())), _command(command)
{
    checkTrails();
    _watch.check();
}

HostSession::~HostSession()
{
    _runner.reset();
    StatHVServiceManager::shutdown();
}

/// Whoever asks for a log or a trace wants to know at once that there will be none.
void HostSession::checkTrails() const
{
    checkLog(_options.logFile);
    if (!_options.traceDirectory.empty() && !HVTracer()->canTrace())
        throw CommandFault(ExitStatus::Usage,
                           _options.traceDirectory + ": no trace can be written in this folder",
                           "it must be a folder that may be written to, or one that can be made");
}

void HostSession::run(const std::string& jobText, const JobOrigin& origin, HVStatDataIterator* rows)
{
    log("job: " + jobText);
    execute(jobText, rows);
    _runner->displayAllMessages(false, false);
    printWarnings(origin);
    // A stop that came when the job was done changes nothing any more: its output is there.
    if (_runner->getProgressListener()->getState() != HVProgressListener::Succeeded)
        _watch.check();
    failIfFailed(jobText, origin);
}

void HostSession::execute(const std::string& jobText, HVStatDataIterator* rows)
{
    ProgressLine progress(_options.quiet ? "never" : _options.progress, "hvhost " + _command);
    HostJournal::instance().setObserver([&progress](const HostJournal::Entry& entry) {
        if (entry.kind == HostJournal::Kind::Progress)
            progress.show(entry.number);
    });
    const auto quiet = [](void*) { HostJournal::instance().setObserver({}); };
    const std::unique_ptr<void, decltype(quiet)> observed(&progress, quiet);
    try {
        _runner->prepareHVLJob(jobText);
    } catch (const EmbeddedHV::Exception& error) {
        throw CommandFault(ExitStatus::Engine, error.getMessage());
    }
    if (rows)
        _runner->addInputIterator(rows);
    _watch.check();
    try {
        _runner->execute();
    } catch (const EmbeddedHV::JavaException& error) {
        throw CommandFault(ExitStatus::JobFailed, error.getMessage(), {}, error.getTrace());
    } catch (const EmbeddedHV::Exception& error) {
        throw CommandFault(ExitStatus::JobFailed, error.getMessage());
    }
}

void HostSession::failIfFailed(const std::string& jobText, const JobOrigin& origin)
{
    EngineFault fault;
    if (!_runner->getProgressListener()->hasError(fault.id, fault.text, fault.detail))
        return;
    log("failed: " + fault.id + " " + fault.text + " " + fault.detail);
    throw wordFault(fault, jobText, origin);
}

void HostSession::printWarnings(const JobOrigin& origin)
{
    for (const HostJournal::Entry& entry :
         HostJournal::instance().entries(HostJournal::Kind::Error)) {
        if (entry.level != kLevelWarning)
            continue;
        ++_warnings;
        const std::string text = withFileName(entry.text, origin);
        log("warning: " + text);
        if (!_options.quiet)
            std::fprintf(stderr, "hvhost: warning: %s\n", text.c_str());
    }
    HostJournal::instance().clear();
}

void HostSession::finish()
{
    printWarnings({});
    if (_options.strict && _warnings > 0)
        throw CommandFault(ExitStatus::Warnings, "done, with warnings");
    log("done");
}

void HostSession::log(const std::string& line) const
{
    appendToLog(_options.logFile, line);
}
