#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/JobOrigin.h"
#include "hvhost/base/ProgressLine.h"

class Dataset;
class HVRunner;
class InputFile;
class HVStatDataIterator;
class InterruptWatch;
class ProcedureDataSource;
class TnProcedure;

/// The host for one command: a procedure with a runner, a log and a progress line. Borrows the
/// options and the watch. A command makes the watch first, so that the user can always stop it.
class HostSession
{
public:
    /// Starts the Java virtual machine. Throws CommandFault (Engine) if it is missing. `data` is
    /// the data that the procedure works on, borrowed; null if the jobs name their own data.
    HostSession(const std::string& command, const CommonOptions& options,
                const InterruptWatch& watch, ProcedureDataSource* data = nullptr);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    HVRunner& runner() { return *_runner; }
    const InterruptWatch& watch() const { return _watch; }

    /// For a command whose jobs use the weight themselves and do not split: sets the dataset's
    /// weight and split in the host and then disables them. The next job warns the user about the
    /// split.
    void giveUpSettings(const Dataset& dataset);
    /// Runs one job and prints its warnings. The execution remains until the next run, so that its
    /// outputs can be read. Throws CommandFault in terms of the text's origin.
    void run(const std::string& jobText, const JobOrigin& origin,
             HVStatDataIterator* rows = nullptr);
    /// The same for a job that reads several row iterators.
    void run(const std::string& jobText, const JobOrigin& origin,
             const std::vector<HVStatDataIterator*>& rows);
    /// The same for work that itself runs one job on the runner, shows its messages and ends its
    /// execution. `work` returns whether it succeeded.
    void perform(const std::function<bool()>& work, const JobOrigin& origin);
    /// Sets which part of the command's work the next jobs do, for its progress; all of it by
    /// default. Both are from 0 to 1.
    void showPart(double begin, double end);
    /// Logs a line about how the command works, and prints it if the command is verbose.
    void note(const std::string& text) const;
    /// Notes how a file is read, and warns of what may be wrong in that.
    void introduce(const InputFile& input);
    /// Prints a warning.
    void warn(const std::string& text);
    /// Counts warnings and errors that the user sees in the output itself.
    void countShownWarnings();
    /// Appends a line to the log, if there is one.
    void log(const std::string& line) const;
    /// Prints the host's remaining messages. Throws CommandFault (Warnings) if there were warnings
    /// and the command is strict.
    void finish();

private:
    void observed(const std::function<void()>& work);
    void execute(const std::string& jobText, const std::vector<HVStatDataIterator*>& rows);
    void checkOutcome(const std::string& jobText, const JobOrigin& origin);
    void printMessages(const JobOrigin& origin, const std::string& error);
    void warnOfKind(const std::string& name, const std::string& text);
    void checkTrails() const;

    /// The warnings of one messageKind.
    struct WarningKind
    {
        int printed = 0;
        int hidden = 0;      ///< since the last report of hidden warnings
        std::string example; ///< the last one
    };

    const CommonOptions& _options;
    const InterruptWatch& _watch;
    std::unique_ptr<TnProcedure> _procedure;
    std::unique_ptr<HVRunner> _runner;
    std::string _command;
    ProgressLine _progress;
    double _partBegin = 0;
    double _partEnd = 1;
    int _warnings = 0;
    std::map<std::string, WarningKind> _kinds;
};
