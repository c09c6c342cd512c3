#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/combine/CombineOptions.h"

/// The options of join. The first file is the left one.
struct JoinOptions : CombineOptions
{
    std::vector<std::string> on; ///< KEY, or LEFT=RIGHT
    std::string how = "inner";   ///< inner, left, right, full or anti
    std::string report;          ///< a file for the keys that did not match; empty: none
};
/// Joins the records of two files.
void join(const JoinOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addJoinCommand(CLI::App& app, CommonOptions& common);
