#pragma once

#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

/// How a series is written in help texts.
inline constexpr const char* kSeriesForm = "DIMENSION,..,METRIC";

/// How a result is shown and where it goes.
struct TcmShownOptions
{
    std::string format;  ///< text, csv, json or html; empty: by the name of the output, else text
    std::string output;  ///< empty for standard output
    long long width = 0; ///< of text; 0: that of the terminal
    bool force = false;
};

/// Functions that add options which several commands have. The options are stored in the given
/// objects, which must outlive the application.

/// The argument for the model file.
void addModel(CLI::App& app, std::string& model);
/// --series
CLI::Option* addSeries(CLI::App& app, std::string& series, const char* purpose);
/// The form and the file of the result.
void addShown(CLI::App& app, TcmShownOptions& options);
