#pragma once

#include <optional>
#include <string>
#include <vector>

#include "CommonOptions.h"

/// The commands. Each throws CommandFault if it fails.

/// The options of convert. Without names to keep, all variables are copied.
struct ConvertOptions : JobOptions
{
    std::vector<std::string> keep;
};
/// Converts a dataset to another form.
void convert(const ConvertOptions& options, const CommonOptions& common);

/// The options of aggregate. Without an output path, or with "-" and no kind, the result is shown.
struct AggregateOptions : JobOptions
{
    std::vector<std::string> by;
    std::vector<std::string> statistics; ///< FUNCTION:FIELD[:NAME], or count
    bool unweighted = false;             ///< each record counts once, even if the file has a weight
    std::string format;                  ///< text, csv or json; empty for text
    long long width = 0;                 ///< of text; 0: the width of the terminal
};
/// Computes grouped aggregates and percentiles.
void aggregate(const AggregateOptions& options, const CommonOptions& common);

/// The options of info.
struct InfoOptions
{
    InputOptions input;
    std::string format = "text"; ///< text, csv or json
    long long width = 0;         ///< as above
    bool showDataModel = false;
};
/// Shows the metadata of a dataset.
void info(const InfoOptions& options, const CommonOptions& common);

/// The options of describe. Without variables, all variables except the weight and the split are
/// described.
struct DescribeOptions
{
    InputOptions input;
    std::vector<std::string> variables;
    std::vector<std::string> by;    ///< empty: the split of the file
    std::vector<std::string> dates; ///< date variables, or numbers that form a date
    int mostDistinct = 100; ///< distinct values of a variable that are listed; -1: any number
    std::string format;     ///< text, html, csv or json; empty: from the name of the output
    long long width = 0;    ///< as above
    std::string output;     ///< empty for standard output
    bool force = false;
    bool printJob = false;
};
/// Shows descriptive statistics, distinct values and time intervals.
void describe(const DescribeOptions& options, const CommonOptions& common);

/// The options of score. Without targets, all results of the model; without variables to keep, all
/// variables of the data.
struct ScoreOptions
{
    std::string model; ///< a PMML file
    InputOptions input;
    RecordOptions records;
    std::vector<std::string> keep;
    std::vector<std::string> targets;
    std::string format;  ///< csv, text or json; empty: from the name of the output, else csv
    long long width = 0; ///< as above
    std::string output;  ///< empty for standard output
    bool force = false;
    bool printJob = false;
};
/// Scores a dataset row by row with a transform model.
void score(const ScoreOptions& options, const CommonOptions& common);

/// The options of render. Without an order file, all tables and charts of the document are shown.
struct RenderOptions
{
    std::string document; ///< a file, or "-"
    std::string order;
    std::string format;  ///< text or html; empty: from the name of the output
    std::string output;  ///< empty for standard output
    long long width = 0; ///< as above
    bool force = false;
    bool debug = false;
};
/// Shows a result document as text or as a page.
void render(const RenderOptions& options, const CommonOptions& common);

/// The options of run: a job, the datasets that it reads and the files that it writes, with the
/// names that the job uses.
struct RunOptions
{
    std::string job;               ///< a file, or "-"
    std::vector<std::string> data; ///< NAME=FILE
    std::vector<std::string> save; ///< NAME=FILE
    std::string userMissing;       ///< exclude or keep; empty: exclude, with a warning
    bool force = false;
    bool printJob = false;
};
/// Runs a job text.
void runJob(const RunOptions& options, const CommonOptions& common);

/// A source of geometry: a shape file, a zip archive with one, or a layer of a map service.
struct MapOptions
{
    std::string source; ///< a file, or an address with "://"
    std::optional<int> layer;
};

/// The options of map info. For a service without a layer, its layers are listed.
struct MapInfoOptions
{
    MapOptions map;
    std::string format; ///< text, csv, json or html; empty: from the name of the output, else text
    std::string output; ///< empty for standard output
    bool force = false;
    long long width = 0; ///< as above
    bool showDataModel = false;
};
/// Shows the metadata of a source of geometry.
void mapInfo(const MapInfoOptions& options, const CommonOptions& common);

/// The coordinate systems, each a name, an id or empty, and the output.
struct GeoJsonOptions
{
    std::string from;
    std::string to;
    std::string output;    ///< "-" for standard output
    std::string dataModel; ///< empty for none
    bool force = false;
};
/// The options of map convert.
struct MapConvertOptions
{
    MapOptions map;
    GeoJsonOptions result;
};
/// Writes a source of geometry as GeoJSON.
void mapConvert(const MapConvertOptions& options, const CommonOptions& common);

/// The options of map points: a dataset and its variables with coordinates.
struct MapPointsOptions
{
    InputOptions input;
    std::string x;
    std::string y;
    std::string z; ///< empty for points in a plane
    GeoJsonOptions result;
};
/// Writes the points in variables of a dataset as GeoJSON.
void mapPoints(const MapPointsOptions& options, const CommonOptions& common);

/// The options of map match: a map, a dataset, and the fields that are matched.
struct MapMatchOptions
{
    MapOptions map;
    InputOptions input;
    std::vector<std::string> keys; ///< MAPFIELD=VARIABLE, or one name for both
    int limit = 20;                ///< rows of each list, -1 for all
    std::string format = "text";   ///< text, csv or json
    long long width = 0;           ///< as above
};
/// Shows how well the keys of a map match those of a dataset.
void mapMatch(const MapMatchOptions& options, const CommonOptions& common);

/// Shows which parts were found and where, and which are missing. Throws if a part is missing
/// without which no job runs.
void doctor(const std::string& format);
