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

void addShown(CLI::App& app, ShownOptions& options)
{
    addShownOptions(app, options,
                    {{"text", "csv", "json", "html"},
                     "The form; html is a page. By default the extension of\nthe file: .csv, .json "
                     "or .html; else text",
                     "Write it to this file",
                     "Output"});
}
