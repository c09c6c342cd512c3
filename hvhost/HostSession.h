#pragma once

#include <memory>
#include <string>

#include "CommonOptions.h"
#include "JobOrigin.h"

class HVRunner;
class HVStatDataIterator;
class InterruptWatch;
class TnProcedure;

/// One command's stay in the host: a procedure with a runner, a log and a line of progress. The
/// watch is borrowed; a command makes it before anything else, so that nothing it does is deaf to
/// the user.
class HostSession
{
public:
    /// Starts the Java virtual machine. Throws CommandFault (Engine) if there is none.
    HostSession(const std::string& command, const CommonOptions& options,
                const InterruptWatch& watch);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    HVRunner& runner() { return *_runner; }
    const CommonOptions& options() const { return _options; }

    /// Runs one job to its end and prints its warnings. The execution stays, for the rows of its
    /// outputs, until the next run. Throws CommandFault, worded by where the text came from.
    void run(const std::string& jobText, const JobOrigin& origin,
             HVStatDataIterator* rows = nullptr);
    /// Prints what the host has told since. Throws CommandFault (Warnings) if there were any
    /// warnings and the command is strict.
    void finish();

private:
    void execute(const std::string& jobText, HVStatDataIterator* rows);
    void failIfFailed(const std::string& jobText, const JobOrigin& origin);
    void printWarnings(const JobOrigin& origin);
    void log(const std::string& line) const;
    void checkTrails() const;

    CommonOptions _options;
    const InterruptWatch& _watch;
    std::unique_ptr<TnProcedure> _procedure;
    std::unique_ptr<HVRunner> _runner;
    std::string _command;
    int _warnings = 0;
};
