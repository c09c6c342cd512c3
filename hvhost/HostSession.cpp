#include "HostSession.h"

#include <cstdio>
#include <fstream>
#include <thread>

#include "CFAppHost.h"
#include "CommandFault.h"
#include "EngineException.h"
#include "EnginePreload.h"
#include "InterruptWatch.h"
#include "Journal.h"
#include "ProgressLine.h"
#include "TnOutput.h"
#include "VexaJVMError.h"
#include "runner/HVProgressListener.h"
#include "runner/HVRunner.h"
#include "runner/StatHVServiceManager.h"

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
                           "hvhost doctor tells what was found; JAVA_HOME names a Java to use");
    }
}

bool namesOneOf(const std::string& text, const std::vector<std::string>& files)
{
    for (const std::string& file : files)
        if (text.find(file) != std::string::npos)
            return true;
    return false;
}

} // namespace

HostSession::HostSession(const std::string& command, const CommonOptions& options)
    : _options(options), _watch(std::make_unique<InterruptWatch>(options.timeout)),
      _procedure(std::make_unique<TnProcedure>("hvhost " + command)),
      _runner(startRunner(_procedure.get())), _command(command)
{
    _watch->check();
}

HostSession::~HostSession()
{
    _runner.reset();
    StatHVServiceManager::shutdown();
    CFAppHost::removeTempDirectory();
}

void HostSession::run(const std::string& jobText, const std::vector<std::string>& inputs)
{
    log("job: " + jobText);
    execute(jobText);
    printMessages();
    _watch->check();
    failIfFailed(inputs);
}

void HostSession::execute(const std::string& jobText)
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
    _watch->check();
    try {
        _runner->execute();
    } catch (const EmbeddedHV::JavaException& error) {
        throw CommandFault(ExitStatus::JobFailed, error.getMessage(), {}, error.getTrace());
    } catch (const EmbeddedHV::Exception& error) {
        throw CommandFault(ExitStatus::JobFailed, error.getMessage());
    }
}

void HostSession::failIfFailed(const std::vector<std::string>& inputs)
{
    std::string id;
    std::string text;
    std::string detail;
    if (!_runner->getProgressListener()->hasError(id, text, detail))
        return;
    log("failed: " + id + " " + text + " " + detail);
    const ExitStatus status = namesOneOf(text, inputs) ? ExitStatus::Input : ExitStatus::JobFailed;
    throw CommandFault(status, text, {}, id + " " + detail);
}

void HostSession::printMessages()
{
    _runner->displayAllMessages(false, false);
    for (const HostJournal::Entry& entry :
         HostJournal::instance().entries(HostJournal::Kind::Error)) {
        if (entry.level != kLevelWarning)
            continue;
        ++_warnings;
        log("warning: " + entry.text);
        if (!_options.quiet)
            std::fprintf(stderr, "hvhost: warning: %s\n", entry.text.c_str());
    }
    HostJournal::instance().clear();
}

void HostSession::finish() const
{
    if (_options.strict && _warnings > 0)
        throw CommandFault(ExitStatus::Warnings, "done, with warnings");
}

void HostSession::log(const std::string& line) const
{
    if (!_options.logFile.empty())
        std::ofstream(_options.logFile, std::ios::app) << line << '\n';
}
