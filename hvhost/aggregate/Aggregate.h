#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/TextRequest.h"

namespace CLI {
class App;
}

/// The options of aggregate. Without an output path, or with "-" and no kind, the result is shown.
struct AggregateOptions : JobOptions
{
    std::vector<std::string> by;
    std::vector<std::string> statistics; ///< FUNCTION:FIELD[:NAME], or count
    bool totals = false;                 ///< also a row for each subtotal, and one for all records
    bool unweighted = false;             ///< each record counts once, even if the file has a weight
    std::string format;                  ///< text, csv or json; empty for text
    TextRequest text;
};
/// Computes grouped aggregates and percentiles.
void aggregate(const AggregateOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addAggregateCommand(CLI::App& app, CommonOptions& common);
