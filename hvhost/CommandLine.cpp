#include "CommandLine.h"

#include <cstdlib>
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "CFAppHost.h"
#include "CommandFault.h"
#include "Commands.h"
#include "Completion.h"

namespace {

constexpr const char* kExitStatuses =
    "Exit status: 0 done; 1 the job failed; 2 usage; 3 an input cannot be read or is invalid;\n"
    "4 the engine or the Java virtual machine cannot start; 5 done with warnings under --strict;\n"
    "124 --timeout; 130 interrupted.";

std::string footer(const std::string& examples)
{
    return "Examples, in the folder examples/data:\n" + examples + "\n" + kExitStatuses;
}

const CLI::App* findCommand(const CLI::App& app, const std::string& name)
{
    try {
        return app.get_subcommand(name);
    } catch (const CLI::OptionNotFound&) {
        return nullptr;
    }
}

/// All options of all commands, and the application that fills them.
class CommandLine
{
public:
    CommandLine();
    CLI::App& app() { return _app; }
    void run();
    bool verbose() const { return _common.verbose; }

private:
    CLI::App* command(const char* name, const char* purpose, const std::string& examples);
    void addConvert();
    void addAggregate();
    void addRun();
    void addRest();
    void addInput(CLI::App& app, InputOptions& options);
    void addOutput(CLI::App& app, OutputOptions& options, bool required);
    void addRecords(CLI::App& app, RecordOptions& options);

    CLI::App _app{"Runs the host's procedures on files, without the host's windows.", "hvhost"};
    CommonOptions _common;
    ConvertOptions _convert;
    AggregateOptions _aggregate;
    RunOptions _run;
    std::string _doctorFormat = "text";
    std::string _shell;
    std::string _helpCommand;
};

CommandLine::CommandLine()
{
    _app.require_subcommand(1);
    _app.set_help_flag("-h,--help", "Show this help");
    _app.footer("hvhost help COMMAND tells more of a command.\n" + std::string(kExitStatuses));
    addConvert();
    addAggregate();
    addRun();
    addRest();
}

CLI::App* CommandLine::command(const char* name, const char* purpose, const std::string& examples)
{
    CLI::App* const added = _app.add_subcommand(name, purpose);
    added->footer(footer(examples));
    added->add_flag("-q,--quiet", _common.quiet, "No warnings, no progress")->group("Common");
    added->add_flag("-v,--verbose", _common.verbose, "Say more of a fault")->group("Common");
    added->add_flag("--strict", _common.strict, "Exit 5 if there were warnings")->group("Common");
    added->add_option("--progress", _common.progress, "auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->group("Common");
    added->add_option("--log", _common.logFile, "Append what happens to this file")
        ->group("Common");
    added
        ->add_option("--trace", _common.traceDirectory,
                     "Write job texts, passwords included, and a log below this folder")
        // The tracer reads its folder once, from the environment, at its first use.
        ->each([](const std::string& folder) { setenv("HV_STAT_DEBUG_DIR", folder.c_str(), 1); })
        ->group("Common");
    added->add_option("--timeout", _common.timeout, "Stop after so many seconds")
        ->check(CLI::PositiveNumber)
        ->group("Common");
    return added;
}

void CommandLine::addInput(CLI::App& app, InputOptions& options)
{
    app.add_option("IN", options.path, "The data file; - for standard input")->required();
    app.add_option("--from", options.kind, "csv, sav or hvbf, whatever the name says")
        ->group("Input");
    app.add_option("--password", options.password, "Password of a sav file")->group("Input");
    app.add_option("--password-file", options.passwordFile, "A file with it on its first line")
        ->group("Input");
    app.add_option("--data-model", options.dataModel, "A data model document for the fields")
        ->group("Input");
    app.add_flag("--no-header", options.noHeader, "A csv file without a line of names")
        ->group("Input");
    app.add_option("--limit", options.limit, "Read at most so many records")
        ->check(CLI::NonNegativeNumber)
        ->group("Input");
    app.add_option("--max-errors", options.maxErrors, "Skip up to so many bad records; -1 for any")
        ->group("Input");
}

void CommandLine::addOutput(CLI::App& app, OutputOptions& options, bool required)
{
    CLI::Option* const path =
        app.add_option("OUT,-o", options.path, "The file to write; - for standard output");
    if (required)
        path->required();
    app.add_option("--to", options.kind, "csv, sav or hvbf, whatever the name says")
        ->group("Output");
    app.add_option("--out-password", options.password, "Seal a sav file with this password")
        ->group("Output");
    app.add_option("--out-password-file", options.passwordFile, "A file with it on its first line")
        ->group("Output");
    app.add_option("--out-data-model", options.dataModel, "Write the data model document here")
        ->group("Output");
    app.add_flag("--force", options.force, "Replace an existing file")->group("Output");
}

void CommandLine::addRecords(CLI::App& app, RecordOptions& options)
{
    app.add_option("--derive", options.derivations,
                   "NAME=EXPRESSION, a new field; the record is x, a field x.name; repeatable")
        ->group("Records");
    app.add_option("--where", options.where, "Keep records for which this expression is true")
        ->group("Records");
}

void CommandLine::addConvert()
{
    CLI::App* const app = command(
        "convert", "Write a dataset in another form.",
        "  hvhost convert weather.csv weather.sav\n"
        "  hvhost convert weather.csv warm.csv --where 'x.temp_max > 20' --keep date,temp_max\n"
        "  hvhost convert weather.csv - --derive 'spread=x.temp_max - x.temp_min' --limit 5\n");
    addInput(*app, _convert.input);
    addOutput(*app, _convert.output, true);
    addRecords(*app, _convert.records);
    app->add_option("--keep", _convert.keep, "Fields to keep, in this order")
        ->delimiter(',')
        ->group("Records");
    app->add_flag("--print-job", _convert.printJob, "Show the job text and run nothing");
    app->callback([this] { convert(_convert, _common); });
}

void CommandLine::addAggregate()
{
    CLI::App* const app = command(
        "aggregate", "Aggregate the records of each group.",
        "  hvhost aggregate weather.csv --by weather --stat mean:temp_max --stat count\n"
        "  hvhost aggregate penguins.csv out.csv --by species,sex --stat p90:body_mass_g\n");
    addInput(*app, _aggregate.input);
    addOutput(*app, _aggregate.output, false);
    addRecords(*app, _aggregate.records);
    app->add_option("--by", _aggregate.by, "Fields that make the groups")
        ->delimiter(',')
        ->group("Aggregates");
    app->add_option("--stat", _aggregate.statistics,
                    "FUNCTION:FIELD[:NAME]: sum, mean, min, max, sd, variance, median, pNN, first, "
                    "last, count; or count alone")
        ->delimiter(',')
        ->required()
        ->group("Aggregates");
    app->add_option("--format", _aggregate.format, "text, csv or json, where no OUT is given")
        ->check(CLI::IsMember({"text", "csv", "json"}));
    app->add_flag("--print-job", _aggregate.printJob, "Show the job text and run nothing");
    app->callback([this] { aggregate(_aggregate, _common); });
}

void CommandLine::addRun()
{
    CLI::App* const app =
        command("run", "Run a job text.",
                "  hvhost run spread.hvl --data weather=weather.csv --save spread=-\n"
                "  hvhost run spread.hvl --print-job\n");
    app->add_option("JOB", _run.job, "A file with a job text; - for standard input")->required();
    app->add_option("--data", _run.data,
                    "NAME=FILE: the job reads the file as {\"dataSource\": NAME}; repeatable");
    app->add_option(
        "--save", _run.save,
        "NAME=FILE: the data source NAME that the job writes goes to the file; repeatable");
    app->add_flag("--force", _run.force, "Replace existing files");
    app->add_flag("--print-job", _run.printJob, "Show the job text and run nothing");
    app->callback([this] { runJob(_run, _common); });
}

void CommandLine::addRest()
{
    CLI::App* const checkup =
        command("doctor", "Tell what was found where, and what is missing.", "  hvhost doctor\n");
    checkup->add_option("--format", _doctorFormat, "text or json")
        ->check(CLI::IsMember({"text", "json"}));
    checkup->callback([this] { doctor(_doctorFormat, _common); });

    CLI::App* const completion =
        _app.add_subcommand("completion", "Print a completion script for a shell.");
    completion->add_option("SHELL", _shell, "bash, zsh or fish")
        ->required()
        ->check(CLI::IsMember({"bash", "zsh", "fish"}));
    completion->callback([this] { std::cout << completionScript(_app, _shell); });

    _app.add_subcommand("version", "Print the version.")->callback([] {
        std::cout << "hvhost " HVINTEG_VERSION "\n";
    });

    CLI::App* const help = _app.add_subcommand("help", "Show the help of a command.");
    help->add_option("COMMAND", _helpCommand, "Its name");
    help->callback([this] {
        const CLI::App* const named =
            _helpCommand.empty() ? &_app : findCommand(_app, _helpCommand);
        if (named == nullptr)
            throw CommandFault(ExitStatus::Usage, _helpCommand + ": no such command");
        std::cout << named->help();
    });
}

/// Leaves no temporary directory behind, whatever becomes of the command.
class TempDirectoryScope
{
public:
    TempDirectoryScope() = default;
    ~TempDirectoryScope() { CFAppHost::removeTempDirectory(); }
    TempDirectoryScope(const TempDirectoryScope&) = delete;
    TempDirectoryScope& operator=(const TempDirectoryScope&) = delete;
};

void printFault(const CommandFault& fault, bool verbose)
{
    std::cout.flush();
    std::cerr << "hvhost: error: " << fault.what() << '\n';
    if (!fault.hint().empty())
        std::cerr << "  hint: " << fault.hint() << '\n';
    if (verbose && !fault.detail().empty())
        std::cerr << fault.detail() << '\n';
}

int usageFault(CommandLine& line, const CLI::ParseError& error, int count, char** words)
{
    if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success))
        return line.app().exit(error);
    const std::string word = count > 1 ? words[1] : "";
    std::string text = error.what();
    std::string hint = "hvhost --help lists the commands";
    if (!word.empty() && word.front() != '-') {
        if (findCommand(line.app(), word) == nullptr) {
            const std::string nearest = nearestCommand(line.app(), word);
            text = word + ": no such command";
            hint = nearest.empty() ? hint : "did you mean " + nearest + "?";
        } else {
            hint = "hvhost help " + word + " shows how it is used";
        }
    }
    printFault(CommandFault(ExitStatus::Usage, text, hint), false);
    return static_cast<int>(ExitStatus::Usage);
}

} // namespace

int runCommandLine(int count, char** words)
{
    const TempDirectoryScope tempDirectory;
    CommandLine line;
    try {
        line.app().parse(count, words);
        std::cout.flush();
        return static_cast<int>(ExitStatus::Done);
    } catch (const CLI::ParseError& error) {
        return usageFault(line, error, count, words);
    } catch (const CommandFault& fault) {
        printFault(fault, line.verbose());
        return static_cast<int>(fault.status());
    } catch (const std::exception& error) {
        printFault(CommandFault(ExitStatus::JobFailed, error.what()), false);
        return static_cast<int>(ExitStatus::JobFailed);
    }
}
