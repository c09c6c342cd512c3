#include "hvhost/cli/CommandLine.h"

#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string_view>

#include <CLI/CLI.hpp>

#include "CFAppHost.h"
#include "JobText.h"
#include "VexaJVM.h"
#include "base/ScopeExit.h"
#include "hvhost/aggregate/Aggregate.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/CommandLog.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/HelpText.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/base/TerminalFilter.h"
#include "hvhost/base/Text.h"
#include "hvhost/base/UserMessages.h"
#include "hvhost/cli/Completion.h"
#include "hvhost/cli/Doctor.h"
#include "hvhost/cli/HintCheck.h"
#include "hvhost/cli/UsageFault.h"
#include "hvhost/combine/Append.h"
#include "hvhost/combine/Join.h"
#include "hvhost/describe/Describe.h"
#include "hvhost/describe/Info.h"
#include "hvhost/job/Convert.h"
#include "hvhost/job/RunJob.h"
#include "hvhost/map/MapCommand.h"
#include "hvhost/score/Score.h"
#include "hvhost/show/Render.h"
#include "hvhost/tcm/TcmCommand.h"
#include "support/Tracing.h"

namespace {

/// The commands that run jobs, in the order of the help.
constexpr void (*kJobCommands[])(CLI::App&, CommonOptions&) = {
    addConvertCommand,  addJoinCommand, addAppendCommand, addAggregateCommand,
    addDescribeCommand, addInfoCommand, addRenderCommand, addRunCommand,
    addScoreCommand,    addMapCommand,  addTcmCommand,
};

/// The options of all commands, and the application that parses them.
class CommandLine
{
public:
    CommandLine();
    CLI::App& app() { return _app; }
    const CommonOptions& common() const { return _common; }

private:
    void addCompletion();
    void addHelp();

    CLI::App _app{"Runs the host's procedures on files, without the host's windows.", "hvhost"};
    CommonOptions _common;
    std::string _shell;
    std::vector<std::string> _helpCommand; ///< several words for a subcommand
};

CommandLine::CommandLine()
{
    // A missing command gets our own message. A second command is an argument of the first, as in
    // help.
    _app.require_subcommand(0, 1);
    // Before the command runs: nothing may fail once it has written its files.
    _app.parse_complete_callback([this] {
        if (_app.get_subcommands().empty())
            throw CommandFault(ExitStatus::Usage, "no command is given", kCommandsHint);
    });
    _app.formatter(helpFormatter());
    _app.set_help_flag("-h,--help", "Show this help");
    _app.set_version_flag("--version", "hvhost " HVINTEG_VERSION, "Print the version");
    _app.footer("hvhost help COMMAND shows the help of a command.\n" + std::string(kExitStatuses));
    for (const auto addCommand : kJobCommands)
        addCommand(_app, _common);
    addDoctorCommand(_app, _common);
    addCompletion();
    _app.add_subcommand("version", "Print the version.")->group(kCommandGroup)->callback([] {
        std::cout << "hvhost " HVINTEG_VERSION "\n";
    });
    addHelp();
}

void CommandLine::addCompletion()
{
    CLI::App* const app =
        _app.add_subcommand("completion", "Print a completion script for a shell.");
    app->group(kCommandGroup);
    app->footer("Examples:\n"
                "  bash: source <(hvhost completion bash)\n"
                "  zsh:  source <(hvhost completion zsh), after compinit\n"
                "  fish: hvhost completion fish | source\n");
    app->add_option("SHELL", _shell, "The shell")
        ->type_name("NAME")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh", "fish"}));
    app->callback([this] { std::cout << completionScript(_app, _shell); });
}

void CommandLine::addHelp()
{
    CLI::App* const app = _app.add_subcommand("help", "Show the help of a command.");
    app->group(kCommandGroup);
    app->add_option("COMMAND", _helpCommand, "Its name")->type_name("NAME");
    app->callback([this] {
        // The application's own help() would show the help of the given command, which is help.
        const CLI::App* named = &_app;
        std::string name = "hvhost";
        for (const std::string& word : _helpCommand) {
            const CLI::App* const next = findCommand(*named, word);
            if (next == nullptr)
                throw unknownCommand(*named, word, kCommandsHint);
            named = next;
            name += " " + word;
        }
        std::cout << helpFormatter()->make_help(named, name, CLI::AppFormatMode::Normal);
    });
}

/// Reports the fault on standard error and in the log. The hint is shown instead of the fault's
/// own. Returns the exit status.
int reportFault(const CommandFault& fault, const std::string& hint, const CommonOptions& common)
{
    const std::string text = withoutLineEnds(fault.what());
    // A stopped command ends at once, even if nobody reads its log.
    const bool isStopped =
        fault.status() == ExitStatus::Interrupted || fault.status() == ExitStatus::Timeout;
    appendToLog(common.logFile, "error: " + withoutLineEnds(fault.logText()),
                isStopped ? LogWait::Never : LogWait::ForReader);
    if (fault.status() == ExitStatus::NoReader)
        return static_cast<int>(fault.status());
    std::cout.flush();
    printMessage("hvhost: error: " + text);
    if (!hint.empty())
        printMessage("  hint: " + hint);
    if (common.verbose && !fault.detail().empty())
        printMessage(withoutLineEnds(fault.detail()));
    return static_cast<int>(fault.status());
}

/// An option of Java may make it end the process while it starts.
void endWithoutJava(const std::string& reason)
{
    reportFault({ExitStatus::Engine, reason}, kJavaHint, {});
    CFAppHost::removeTempDirectory();
    // Other threads are running, so nothing is destroyed.
    std::_Exit(static_cast<int>(ExitStatus::Engine));
}

/// Parses the words and runs the command.
void parse(CLI::App& app, int count, char** words)
{
    try {
        app.parse(count, words);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success))
            throw usageFault(app, error);
        app.exit(error);
    }
    flushStandardOutput();
}

constexpr const char* kUnknownReason = "the command failed for a reason that is not known";

bool isBlank(std::string_view text)
{
    return text.find_first_not_of(" \n") == std::string_view::npos;
}

/// Converts the exception that is being handled to a CommandFault.
CommandFault faultInFlight()
{
    try {
        throw;
    } catch (const CommandFault& fault) {
        return isBlank(fault.what())
                   ? CommandFault{fault.status(), kUnknownReason, fault.hint(), fault.detail()}
                   : fault;
    } catch (const std::bad_alloc&) {
        return {ExitStatus::JobFailed, "there is not enough memory"};
    } catch (const std::exception& error) {
        return {ExitStatus::JobFailed, isBlank(error.what()) ? kUnknownReason : error.what()};
    } catch (...) {
        return {ExitStatus::JobFailed, kUnknownReason};
    }
}

int run(int count, char** words)
{
    CommandLine line;
    try {
        parse(line.app(), count, words);
        return static_cast<int>(ExitStatus::Done);
    } catch (...) {
        const CommandFault fault = faultInFlight();
        return reportFault(fault, fittingHint(fault.hint(), line.app()), line.common());
    }
}

} // namespace

int runCommandLine(int count, char** words)
{
    occupyStandardStreams();
    ignoreLostReaders();
    rememberAddresses(count, words);
    setJobTextFilter(&EmbeddedHV::withoutSecrets);
    const StoppableOutput output;
    std::optional<CleanedStream> cleaned;
    if (isatty(STDOUT_FILENO) != 0)
        cleaned.emplace(std::cout);
    VexaJVM::GetInstance()->SetEndHandler(endWithoutJava);
    const base::ScopeExit removal([] { CFAppHost::removeTempDirectory(); });
    try {
        return run(count, words);
    } catch (...) {
        // The options are unknown, and so is the log.
        const CommandFault fault = faultInFlight();
        return reportFault(fault, fault.hint(), {});
    }
}
