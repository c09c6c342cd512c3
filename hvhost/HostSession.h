#pragma once

#include <functional>
#include <memory>
#include <string>

#include "CommonOptions.h"
#include "JobOrigin.h"

class Dataset;
class HVRunner;
class HVStatDataIterator;
class InterruptWatch;
class ProcedureDataSource;
class TnProcedure;

/// One command's stay in the host: a procedure with a runner, a log and a line of progress. The
/// watch is borrowed; a command makes it before anything else, so that nothing it does is deaf to
/// the user.
class HostSession
{
public:
    /// Starts the Java virtual machine. Throws CommandFault (Engine) if there is none. `data` is
    /// what the procedure works on, borrowed; null for a command whose jobs know by themselves.
    HostSession(const std::string& command, const CommonOptions& options,
                const InterruptWatch& watch, ProcedureDataSource* data = nullptr);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    HVRunner& runner() { return *_runner; }
    const CommonOptions& options() const { return _options; }
    const InterruptWatch& watch() const { return _watch; }

    /// For a command whose jobs weigh by themselves and do not split: sets the dataset's weight and
    /// split in the host and gives them up; of the split the user is warned with the next job.
    void giveUpSettings(const Dataset& dataset);
    /// Runs one job to its end and prints its warnings. The execution stays, for the rows of its
    /// outputs, until the next run. Throws CommandFault, worded by where the text came from.
    void run(const std::string& jobText, const JobOrigin& origin,
             HVStatDataIterator* rows = nullptr);
    /// The same for work that runs one job on the runner, shows its messages and ends its execution
    /// by itself. `work` returns whether it succeeded.
    void perform(const std::function<bool()>& work, const JobOrigin& origin);
    /// Tells the user of something that is no fault.
    void warn(const std::string& text);
    /// Takes note of warnings, and of what is worse, that the user sees in the output itself.
    void countShownWarnings();
    /// Appends a line to the log, if there is one.
    void log(const std::string& line) const;
    /// Prints what the host has told since. Throws CommandFault (Warnings) if there were any
    /// warnings and the command is strict.
    void finish();

private:
    void observed(const std::function<void()>& work);
    void execute(const std::string& jobText, HVStatDataIterator* rows);
    void settle(const std::string& jobText, const JobOrigin& origin);
    void printMessages(const JobOrigin& origin, const std::string& error);
    void checkTrails() const;

    CommonOptions _options;
    const InterruptWatch& _watch;
    std::unique_ptr<TnProcedure> _procedure;
    std::unique_ptr<HVRunner> _runner;
    std::string _command;
    int _warnings = 0;
};
