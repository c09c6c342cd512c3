#pragma once

#include "hvhost/base/CommonOptions.h"
#include "hvhost/combine/CombineOptions.h"

/// The options of append. The fields of the result are those of the first file, then those that
/// only later files have.
struct AppendOptions : CombineOptions
{
    bool byPosition = false; ///< fields match by their position, not by their names
};
/// Appends the records of several files.
void append(const AppendOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addAppendCommand(CLI::App& app, CommonOptions& common);
