#include "hvhost/tcm/TcmOptions.h"

#include <CLI/CLI.hpp>

#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addModel(CLI::App& app, std::string& model)
{
    app.add_option("MODEL", model, "A model that hvhost tcm train wrote")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
}

CLI::Option* addSeries(CLI::App& app, std::string& series, const char* purpose)
{
    return app.add_option("--series", series, purpose)
        ->type_name(kSeriesForm)
        ->check(notEmpty())
        ->group("Series");
}

void addShown(CLI::App& app, TcmShownOptions& options)
{
    const auto add = [&app](const char* name, auto& value, const char* shown, const char* purpose) {
        return app.add_option(name, value, purpose)->type_name(shown)->group("Output");
    };
    add("--format", options.format, "FORM",
        "The form; html is a page. By default the extension of\nthe file: .csv, .json or .html; "
        "else text")
        ->check(CLI::IsMember({"text", "csv", "json", "html"}));
    add("-o", options.output, "FILE", "Write it to this file")->check(notEmpty());
    app.add_flag("--force", options.force, "Replace an existing file")->group("Output");
    addWidth(app, options.width)->group("Output");
}
