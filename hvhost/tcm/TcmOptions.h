#pragma once

#include <string>

#include "hvhost/show/ShownOptions.h"

namespace CLI {
class App;
class Option;
} // namespace CLI

/// How a series is written in help texts.
inline constexpr const char* kSeriesForm = "DIMENSION,..,METRIC";

/// Functions that add options which several commands have. The options are stored in the given
/// objects, which must outlive the application.

/// The argument for the model file.
void addModel(CLI::App& app, std::string& model);
/// --series
CLI::Option* addSeries(CLI::App& app, std::string& series, const char* purpose);
/// The form and the file of the result.
void addShown(CLI::App& app, ShownOptions& options);
