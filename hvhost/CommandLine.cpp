#include "CommandLine.h"

#include <unistd.h>

#include <exception>
#include <iostream>
#include <new>
#include <string_view>

#include <CLI/CLI.hpp>

#include "CFAppHost.h"
#include "CommandFault.h"
#include "CommandLog.h"
#include "Commands.h"
#include "Completion.h"
#include "HelpText.h"
#include "JobText.h"
#include "MapCommandLine.h"
#include "OptionChecks.h"
#include "OptionGroups.h"
#include "StandardStreams.h"
#include "TerminalFilter.h"
#include "Text.h"
#include "UsageFault.h"
#include "UserMessages.h"
#include "support/Tracing.h"
#include "tcm/TcmCommandLine.h"

namespace {

/// The options of all commands, and the application that parses them.
class CommandLine
{
public:
    CommandLine();
    CLI::App& app() { return _app; }
    const CommonOptions& common() const { return _common; }

private:
    /// Adds a command with its help. Each of the functions below adds the options of one command.
    CLI::App* command(const char* name, const char* purpose, const std::string& examples);
    void addConvert();
    void addAggregate();
    void addDescribe();
    void addInfo();
    void addRender();
    void addRun();
    void addScore();
    void addDoctor();
    void addCompletion();
    void addHelp();

    CLI::App _app{"Runs the host's procedures on files, without the host's windows.", "hvhost"};
    CommonOptions _common;
    ConvertOptions _convert;
    AggregateOptions _aggregate;
    DescribeOptions _describe;
    InfoOptions _info;
    RenderOptions _render;
    RunOptions _run;
    ScoreOptions _score;
    MapCommandLine _map;
    TcmCommandLine _tcm;
    std::string _doctorFormat = "text";
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
    addConvert();
    addAggregate();
    addDescribe();
    addInfo();
    addRender();
    addRun();
    addScore();
    _map.addTo(_app, _common);
    _tcm.addTo(_app, _common);
    addDoctor();
    addCompletion();
    _app.add_subcommand("version", "Print the version.")->group(kCommandGroup)->callback([] {
        std::cout << "hvhost " HVINTEG_VERSION "\n";
    });
    addHelp();
}

CLI::App* CommandLine::command(const char* name, const char* purpose, const std::string& examples)
{
    CLI::App* const added = _app.add_subcommand(name, purpose)->group(kCommandGroup);
    added->footer("Examples, in the folder examples/data:\n" + examples + "\n" + kExitStatuses);
    return added;
}

void CommandLine::addConvert()
{
    CLI::App* const app = command(
        "convert", "Write a dataset in another form.",
        "  hvhost convert weather.csv weather.sav\n"
        "  hvhost convert weather.csv warm.csv --where 'x.temp_max > 20' --keep date,temp_max\n"
        "  hvhost convert weather.csv - --derive 'spread=x.temp_max - x.temp_min' --limit 5\n");
    addJobOptions(*app, _convert, true);
    app->add_option("--keep", _convert.keep, "Fields to keep, in this order, separated by commas")
        ->type_name("FIELD")
        ->check(notEmpty())
        ->delimiter(',')
        ->allow_extra_args(false)
        ->group("Records");
    addWeight(*app, _convert.input);
    addCommonOptions(*app, _common);
    app->callback([this] { convert(_convert, _common); });
}

void CommandLine::addAggregate()
{
    CLI::App* const app = command(
        "aggregate", "Aggregate the records of each group.",
        "  hvhost aggregate weather.csv --by weather --stat mean:temp_max --stat count\n"
        "  hvhost aggregate penguins.csv out.csv --by species,sex --stat p90:body_mass_g\n");
    addJobOptions(*app, _aggregate, false);
    const auto add = [app](const char* name, std::vector<std::string>& values, const char* shown,
                           const char* purpose) {
        return app->add_option(name, values, purpose)
            ->type_name(shown)
            ->delimiter(',')
            ->allow_extra_args(false)
            ->group("Aggregates");
    };
    add("--by", _aggregate.by, "FIELD", "Fields that form the groups, separated by commas");
    add("--stat", _aggregate.statistics, "FUNCTION:FIELD[:NAME]",
        "sum, mean, min, max, sd, variance, median, pNN,\nfirst, last, count; or count alone")
        ->required();
    addWeight(*app, _aggregate.input);
    app->add_flag("--unweighted", _aggregate.unweighted,
                  "Count each record once, even if the file has a weight")
        ->excludes("--weight")
        ->group("Input");
    app->add_option("--format", _aggregate.format,
                    "The form of a result that is shown, without OUT")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "csv", "json"}));
    addWidth(*app, _aggregate.width);
    addCommonOptions(*app, _common);
    app->callback([this] { aggregate(_aggregate, _common); });
}

void CommandLine::addDescribe()
{
    CLI::App* const app =
        command("describe", "Describe the variables of a dataset.",
                "  hvhost describe weather.csv\n"
                "  hvhost describe weather.csv wind weather --date date --format json\n"
                "  hvhost describe penguins.csv --by species -o penguins.html\n");
    addCasesOptions(*app, _describe.input);
    app->add_option("VARIABLE", _describe.variables,
                    "Variables to describe; by default all except the\nweight and the split")
        ->type_name("NAME");
    const auto add = [app](const char* name, auto& value, const char* shown, const char* purpose) {
        return app->add_option(name, value, purpose)->type_name(shown)->group("Description");
    };
    for (CLI::Option* const list :
         {add("--by", _describe.by, "VARIABLE",
              "Describe each group of cases with equal values of\nthese, separated by commas"),
          add("--date", _describe.dates, "VARIABLE",
              "Find the time interval of a date, or of numbers that\nform one, for example "
              "year,month")})
        list->delimiter(',')->allow_extra_args(false);
    add("--distinct", _describe.mostDistinct, "N",
        "List the distinct values of a category if there are at\nmost N; 100 by default, -1 for "
        "any number")
        ->check(wholeNumberFrom(-1));
    add("--format", _describe.format, "FORM",
        "The form; csv has only the statistics. By default the\nextension of the file, else text")
        ->check(CLI::IsMember({"text", "html", "csv", "json"}));
    addWidth(*app, _describe.width)->group("Description");
    add("-o", _describe.output, "FILE", "Write the description to this file")->check(notEmpty());
    app->add_flag("--force", _describe.force, "Replace an existing file")->group("Description");
    addPrintJob(*app, _describe.printJob);
    addCommonOptions(*app, _common);
    app->callback([this] { describe(_describe, _common); });
}

void CommandLine::addInfo()
{
    CLI::App* const app = command("info", "Show the metadata of a dataset.",
                                  "  hvhost info weather.csv\n"
                                  "  hvhost info weather.csv --format json\n");
    addDatasetOptions(*app, _info.input);
    app->add_option("--format", _info.format, "How it is shown")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "csv", "json"}));
    addWidth(*app, _info.width);
    app->add_flag("--data-model", _info.showDataModel, "Show the data model document instead");
    addCommonOptions(*app, _common);
    app->callback([this] { info(_info, _common); });
}

void CommandLine::addRender()
{
    CLI::App* const app =
        command("render", "Show the tables, charts and messages of a result document.",
                "  hvhost render weather.json\n"
                "  hvhost render weather.json --order weather-order.json -o weather.html\n");
    app->add_option("RESULT", _render.document, "The result document; - for standard input")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
    const auto add = [app](const char* name, auto& value, const char* shown, const char* purpose) {
        return app->add_option(name, value, purpose)->type_name(shown)->group("Output");
    };
    add("--order", _render.order, "FILE",
        "A JSON file that selects what is shown, and how; by\ndefault every table and chart is "
        "shown")
        ->check(notEmpty());
    add("--format", _render.format, "FORM",
        "The form; by default html if the name of the file\nends in .html, else text")
        ->check(CLI::IsMember({"text", "html"}));
    addWidth(*app, _render.width)->group("Output");
    add("-o", _render.output, "FILE", "Write the output to this file")->check(notEmpty());
    app->add_flag("--force", _render.force, "Replace an existing file")->group("Output");
    app->add_flag("--debug", _render.debug, "Also show how long each part took")->group("Output");
    addCommonOptions(*app, _common);
    app->callback([this] { render(_render, _common); });
}

void CommandLine::addRun()
{
    CLI::App* const app =
        command("run", "Run a job text.",
                "  hvhost run spread.hvl --data weather=weather.csv --save spread=-\n"
                "  hvhost run spread.hvl --print-job\n");
    app->add_option("JOB", _run.job, "A file with a job text; - for standard input")
        ->type_name("FILE")
        ->required();
    const auto add = [app](const char* name, std::vector<std::string>& values,
                           const char* purpose) {
        app->add_option(name, values, purpose)->type_name("NAME=FILE")->allow_extra_args(false);
    };
    add("--data", _run.data, "The job reads this file as {\"dataSource\": NAME};\nrepeatable");
    add("--save", _run.save, "Write the data source NAME of the job to this file;\nrepeatable");
    addUserMissing(*app, _run.userMissing);
    app->add_flag("--force", _run.force, "Replace existing files");
    addPrintJob(*app, _run.printJob);
    addCommonOptions(*app, _common);
    app->callback([this] { runJob(_run, _common); });
}

void CommandLine::addScore()
{
    CLI::App* const app = command(
        "score", "Score each record with a transform model.",
        "  hvhost score penguins.pmml penguins.csv\n"
        "  hvhost score penguins.pmml penguins.csv --keep species --target beak_ratio\n"
        "  hvhost score penguins.pmml penguins.csv --where 'x.sex == \"MALE\"' -o males.csv\n");
    app->add_option("MODEL", _score.model, "A PMML file with derived fields; - for standard input")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
    addRecordsOptions(*app, _score.input, _score.records);
    const auto add = [app](const char* name, auto& value, const char* shown, const char* purpose) {
        return app->add_option(name, value, purpose)->type_name(shown)->group("Output");
    };
    for (CLI::Option* const list :
         {add("--keep", _score.keep, "FIELD",
              "Fields of the data to keep with the results, separated\nby commas; all by default"),
          add("--target", _score.targets, "NAME",
              "Results of the model to write, separated by commas;\nall by default")})
        list->delimiter(',')->allow_extra_args(false);
    add("--format", _score.format, "FORM",
        "The form; by default json or text if the name of the\nfile ends in .json or .txt, else "
        "csv")
        ->check(CLI::IsMember({"text", "csv", "json"}));
    addWidth(*app, _score.width)->group("Output");
    add("-o", _score.output, "FILE", "Write the scored records to this file")->check(notEmpty());
    app->add_flag("--force", _score.force, "Replace an existing file")->group("Output");
    addPrintJob(*app, _score.printJob);
    addCommonOptions(*app, _common);
    app->callback([this] { score(_score, _common); });
}

void CommandLine::addDoctor()
{
    CLI::App* const app = command(
        "doctor", "Show which parts are installed, and which are missing.", "  hvhost doctor\n");
    app->add_option("--format", _doctorFormat, "The form of the output")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "json"}));
    app->callback([this] { doctor(_doctorFormat); });
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

/// Removes the temporary directory in any case.
class TempDirectoryScope
{
public:
    TempDirectoryScope() = default;
    ~TempDirectoryScope() { CFAppHost::removeTempDirectory(); }
    TempDirectoryScope(const TempDirectoryScope&) = delete;
    TempDirectoryScope& operator=(const TempDirectoryScope&) = delete;
};

/// Reports the fault on standard error and in the log. Returns the exit status.
int reportFault(const CommandFault& fault, const CommonOptions& common)
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
    if (!fault.hint().empty())
        printMessage("  hint: " + fault.hint());
    if (common.verbose && !fault.detail().empty())
        printMessage(withoutLineEnds(fault.detail()));
    return static_cast<int>(fault.status());
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
        return reportFault(faultInFlight(), line.common());
    }
}

} // namespace

int runCommandLine(int count, char** words)
{
    occupyStandardStreams();
    ignoreLostReaders();
    rememberAddresses(count, words);
    setJobTextFilter(&EmbeddedHV::withoutSecrets);
    std::optional<CleanedStream> cleaned;
    if (isatty(STDOUT_FILENO) != 0)
        cleaned.emplace(std::cout);
    const TempDirectoryScope tempDirectory;
    try {
        return run(count, words);
    } catch (...) {
        // The options are unknown, and so is the log.
        return reportFault(faultInFlight(), {});
    }
}
