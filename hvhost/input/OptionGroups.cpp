#include "hvhost/input/OptionGroups.h"

#include <cstdlib>

#include <CLI/CLI.hpp>

#include "hvhost/input/OptionChecks.h"

namespace {

/// How a csv file is written that is not plain.
void addTextForm(CLI::App& app, InputOptions& options)
{
    const auto add = [&app](const char* name, auto& value, const char* purpose) {
        return app.add_option(name, value, purpose)->group("Input");
    };
    add(options.missingOption.c_str(), options.missing,
        "Texts of a csv or xlsx file that are missing values,\nas in NA,N/A")
        ->type_name("TEXT")
        ->delimiter(',')
        ->check(notEmpty())
        ->allow_extra_args(false);
    add("--type", options.types,
        "The type of a field of a csv or xlsx file: text,\ninteger, real, boolean, date, time or "
        "timestamp;\nrepeatable")
        ->type_name("NAME=TYPE")
        ->check(notEmpty())
        ->allow_extra_args(false);
    add("--date-format", options.dateFormat,
        "How a csv file writes dates, as in %d.%m.%Y; by\ndefault it is detected from the dates")
        ->type_name("FORMAT")
        ->check(notEmpty());
    add("--thousands", options.thousands, "What groups the digits of numbers in a csv file")
        ->type_name("CHARACTER")
        ->check(oneCharacter());
    add("--comment", options.comment, "Lines of a csv file that begin with it are ignored")
        ->type_name("CHARACTER")
        ->check(oneCharacter());
    add("--skip", options.skippedLines,
        "Ignore the first N lines of a csv file, or rows of a\nsheet")
        ->type_name("N")
        ->check(wholeNumberFrom(0));
}

/// The input file and the options for opening it.
void addSource(CLI::App& app, InputOptions& options, const char* argument = "IN")
{
    app.add_option(argument, options.path, "The data file; - for standard input")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
    addForm(app, options);
}

} // namespace

void addForm(CLI::App& app, InputOptions& options)
{
    const auto add = [&app](const char* name, auto& value, const char* purpose) {
        return app.add_option(name, value, purpose)->group("Input");
    };
    add(options.kindOption.c_str(), options.kind, "The kind of the file, whatever its name is")
        ->type_name("KIND")
        ->check(inputKindWord());
    CLI::Option* const password =
        add("--password", options.password, "Password of a sav file")->type_name("WORD");
    add("--password-file", options.passwordFile, "A file with it on its first line")
        ->type_name("FILE")
        ->check(notEmpty())
        ->excludes(password->check(notEmpty()));
    add("--encoding", options.encoding, "Encoding of a csv file, as in windows-1252")
        ->type_name("NAME")
        ->check(notEmpty());
    add("--separator", options.separator,
        "The separator of a csv file, or tab; by default it is\ndetected from the first lines")
        ->type_name("CHARACTER")
        ->check(notEmpty() & separatorWordCheck());
    app.add_flag("--decimal-comma", options.decimalComma,
                 "Numbers of a csv file are written as 1.234,5")
        ->group("Input");
    CLI::Option* const none =
        app.add_flag("--no-header", options.noHeader, "A csv or xlsx file without a line of names")
            ->group("Input");
    app.add_flag("--header", options.header,
                 "The first line has the names, also if it looks like\ndata")
        ->group("Input")
        ->excludes(none);
    add("--sheet", options.sheet,
        "The name or the number of a sheet of an xlsx file; by\ndefault the first one")
        ->type_name("SHEET")
        ->check(notEmpty());
    addTextForm(app, options);
}

namespace {

/// The options for how a job reads it.
void addReading(CLI::App& app, InputOptions& options)
{
    const auto add = [&app](const char* name, auto& value, const char* purpose) {
        return app.add_option(name, value, purpose)->group("Input");
    };
    add("--first", options.first, "Read only the first N records")
        ->type_name("N")
        ->check(wholeNumberFrom(0));
    addUserMissing(app, options.userMissing)->group("Input");
    CLI::Option* const direct =
        app.add_flag("--direct", options.direct,
                     "The engine reads the file; by default it does where\nnothing needs the host")
            ->group("Input");
    CLI::Option* const served =
        app.add_flag("--served", options.served, "The host reads the file and serves its cases")
            ->group("Input")
            ->excludes(direct);
    add("--data-model", options.dataModel,
        "A data model document for the fields; implies\n--direct")
        ->type_name("FILE")
        ->excludes(served)
        ->check(notEmpty());
    add("--max-errors", options.maxErrors,
        "Skip up to N bad records of a csv file, -1 for any\nnumber; implies --direct")
        ->type_name("N")
        ->excludes(served)
        ->check(wholeNumberFrom(-1));
}

} // namespace

void addOutputPath(CLI::App& app, OutputOptions& options, const char* names, bool needed)
{
    app.add_option(names, options.path, "The file to write; - for standard output")
        ->type_name("FILE")
        ->required(needed)
        ->check(notEmpty());
}

void addOutputForm(CLI::App& app, OutputOptions& options)
{
    const auto add = [&app](const char* name, std::string& value, const char* purpose) {
        return app.add_option(name, value, purpose)->group("Output");
    };
    add("--to", options.kind, "The kind of the file, whatever its name is")
        ->type_name("KIND")
        ->check(outputKindWord());
    CLI::Option* const password =
        add("--out-password", options.password, "Encrypt a sav file with this password")
            ->type_name("WORD");
    add("--out-password-file", options.passwordFile, "A file with it on its first line")
        ->type_name("FILE")
        ->check(notEmpty())
        ->excludes(password->check(notEmpty()));
    add("--out-data-model", options.dataModel, "Write the data model document here")
        ->type_name("FILE")
        ->check(notEmpty());
    app.add_flag("--force", options.force, "Replace existing files")->group("Output");
}

void addRecords(CLI::App& app, RecordOptions& options)
{
    app.add_option("--derive", options.derivations,
                   "A new field; the record is x, a field x.name;\nrepeatable")
        ->type_name("NAME=EXPRESSION")
        ->allow_extra_args(false)
        ->group("Records");
    app.add_option("--where", options.where, "Keep records for which this is true")
        ->type_name("EXPRESSION")
        ->check(notEmpty())
        ->group("Records");
    app.add_option("--limit", options.limit, "Use at most N records, after --where")
        ->type_name("N")
        ->check(wholeNumberFrom(0))
        ->group("Records");
}

void addSelection(CLI::App& app, RecordOptions& options)
{
    const auto add = [&app](const char* name, auto& value, const char* purpose) {
        return app.add_option(name, value, purpose)->group("Records");
    };
    const auto addList = [&](const char* name, std::vector<std::string>& values, const char* shown,
                             const char* purpose) {
        return add(name, values, purpose)
            ->type_name(shown)
            ->check(notEmpty())
            ->delimiter(',')
            ->allow_extra_args(false);
    };
    app.add_flag("--distinct", options.distinct, "Keep the first of records that are equal")
        ->group("Records");
    addList("--distinct-by", options.distinctBy, "FIELD",
            "Keep the first of records that are equal in these\nfields, separated by commas");
    CLI::Option* const sample =
        add("--sample", options.sample, "Draw N records, or each one with P% probability")
            ->type_name("N|P%")
            ->check(sampleSize());
    add("--seed", options.seed, "Another number draws another sample")
        ->type_name("N")
        ->needs(sample);
    CLI::Option* const sort =
        addList("--sort", options.sort, "FIELD[:desc]",
                "Sort by these fields, separated by commas;\nmissing values are last");
    CLI::Option* const top =
        add("--top", options.top, "Keep the N records with the greatest values of --by")
            ->type_name("N")
            ->check(wholeNumberFrom(0))
            ->excludes(sort);
    CLI::Option* const topBy = addList("--by", options.topBy, "FIELD", "The fields for --top");
    top->needs(topBy);
    topBy->needs(top);
    addList("--keep", options.keep, "FIELD", "Fields to keep, in this order, separated by commas");
}

void addCommonOptions(CLI::App& app, CommonOptions& options)
{
    const auto add = [&app](const char* name, auto& value, const char* purpose) {
        return app.add_option(name, value, purpose)->group("Common");
    };
    app.add_flag("-q,--quiet", options.quiet, "No warnings, no progress")->group("Common");
    app.add_flag("-v,--verbose", options.verbose, "Show the details of an error and every warning")
        ->group("Common");
    app.add_flag("--strict", options.strict, "Exit 5 if there were warnings")->group("Common");
    add("--progress", options.progress, "Progress on standard error; auto: on a terminal")
        ->type_name("WHEN")
        ->check(CLI::IsMember({"auto", "always", "never"}));
    add("--log", options.logFile, "Append a log to this file")
        ->type_name("FILE")
        ->check(notEmpty() & noStream());
    add("--trace", options.traceDirectory,
        "Write job texts, without passwords, and a log below\nthis folder")
        ->type_name("FOLDER")
        ->check(notEmpty())
        // The tracer reads its folder once, from the environment, at its first use.
        ->each([](const std::string& folder) { setenv("HV_STAT_DEBUG_DIR", folder.c_str(), 1); });
    add("--timeout", options.timeout, "Stop after SECONDS")
        ->type_name("SECONDS")
        ->check(positiveNumber());
}

void addEngineOptions(CLI::App& app, CommonOptions& options)
{
    app.add_option("--engine", options.engine,
                   "Run on the Spark cluster at this address,\nsuch as sc://host:15002")
        ->type_name("URL")
        ->envname("HVHOST_ENGINE")
        ->group("Engine");
    app.add_option("--engine-scratch", options.engineScratch,
                   "A folder that all workers of the cluster see,\nfor intermediate records")
        ->type_name("URI")
        ->envname("HVHOST_ENGINE_SCRATCH")
        ->group("Engine");
    app.add_option("--engine-sums", options.engineSums,
                   "Sums and means of reals on the cluster:\nexact or, faster, as doubles")
        ->type_name("KIND")
        ->check(CLI::IsMember({"exact", "double"}))
        ->envname("HVHOST_ENGINE_SUMS")
        ->group("Engine");
}

void addJobOptions(CLI::App& app, JobOptions& options, bool needsOutput)
{
    addSource(app, options.input);
    addReading(app, options.input);
    addOutputPath(app, options.output, "OUT,-o", needsOutput);
    addOutputForm(app, options.output);
    addRecords(app, options.records);
    addPrintJob(app, options.printJob);
}

void addRecordsOptions(CLI::App& app, InputOptions& input, RecordOptions& records)
{
    addSource(app, input);
    addReading(app, input);
    addRecords(app, records);
}

void addDatasetOptions(CLI::App& app, InputOptions& options)
{
    addSource(app, options);
}

void addMapData(CLI::App& app, InputOptions& options)
{
    options.kindOption = "--data-kind";
    addSource(app, options, "DATA");
}

void addModelData(CLI::App& app, InputOptions& options, bool isNeeded)
{
    addSource(app, options, "DATA");
    app.get_option("DATA")->required(isNeeded);
}

void addCasesOptions(CLI::App& app, InputOptions& options)
{
    addSource(app, options);
    addUserMissing(app, options.userMissing)->group("Input");
    addWeight(app, options);
}

CLI::Option* addUserMissing(CLI::App& app, std::string& what)
{
    return app
        .add_option("--user-missing", what,
                    "Whether user-missing values count as missing; by\ndefault they do, except if "
                    "records are only copied")
        ->type_name("WHAT")
        ->check(CLI::IsMember({"exclude", "keep"}));
}

void addWeight(CLI::App& app, InputOptions& options)
{
    app.add_option("--weight", options.weight,
                   "Variable with the number of cases that a case\nrepresents")
        ->type_name("VARIABLE")
        ->check(notEmpty())
        ->group("Input");
}

std::vector<CLI::Option*> addTextOptions(CLI::App& app, TextRequest& text)
{
    return {
        app.add_option("--width", text.width, "The width of text; by default that of the terminal")
            ->type_name("N")
            ->check(wholeNumberFrom(20)),
        app.add_flag("--group-digits", text.groupsDigits,
                     "Put blanks between groups of digits in text: 1 234 567")};
}

void addPrintJob(CLI::App& app, bool& printJob)
{
    app.add_flag("--print-job", printJob,
                 "Show the job text, passwords included, and run\nnothing");
}
