#include "hvhost/combine/CombineOptions.h"

#include <CLI/CLI.hpp>

#include "hvhost/input/OptionGroups.h"

void addCombineOptions(CLI::App& app, CombineOptions& options)
{
    addForm(app, options.form);
    addUserMissing(app, options.form.userMissing)->group("Input");
    addOutputForm(app, options.output);
    addRecords(app, options.records);
    addSelection(app, options.records);
    addPrintJob(app, options.printJob);
}
