#pragma once

#include <optional>
#include <string>
#include <vector>

#include "CommonOptions.h"

/// The commands. Each throws CommandFault, and returns when it is done.

/// Without names to keep, all variables go over.
struct ConvertOptions : JobOptions
{
    std::vector<std::string> keep;
};
/// A dataset to another form.
void convert(const ConvertOptions& options, const CommonOptions& common);

/// Without an output path, or with "-" without a kind, the result is shown.
struct AggregateOptions : JobOptions
{
    std::vector<std::string> by;
    std::vector<std::string> statistics; ///< FUNCTION:FIELD[:NAME], or count
    bool unweighted = false;             ///< each record counts once, whatever its file says
    std::string format;                  ///< text, csv or json; empty for text
    long long width = 0;                 ///< of text; 0: that of the terminal
};
/// Grouped aggregates and percentiles.
void aggregate(const AggregateOptions& options, const CommonOptions& common);

/// What of a dataset to tell, and in which form.
struct InfoOptions
{
    InputOptions input;
    std::string format = "text"; ///< text, csv or json
    long long width = 0;         ///< as above
    bool showDataModel = false;
};
/// What is known of a dataset.
void info(const InfoOptions& options, const CommonOptions& common);

/// Without variables, all but those that weigh the cases or split the file.
struct DescribeOptions
{
    InputOptions input;
    std::vector<std::string> variables;
    std::vector<std::string> by;    ///< empty: the split of the file
    std::vector<std::string> dates; ///< date variables, or numbers that make up a date
    int mostDistinct = 100;         ///< values of a variable that are told, -1 for any number
    std::string format;             ///< text, html, csv or json; empty: by the name of the output
    long long width = 0;            ///< as above
    std::string output;             ///< empty for standard output
    bool force = false;
    bool printJob = false;
};
/// Descriptive statistics, distinct values and time intervals.
void describe(const DescribeOptions& options, const CommonOptions& common);

/// Without targets, all results of the model; without variables to keep, all of the data.
struct ScoreOptions
{
    std::string model; ///< a PMML file
    InputOptions input;
    RecordOptions records;
    std::vector<std::string> keep;
    std::vector<std::string> targets;
    std::string format;  ///< csv, text or json; empty: by the name of the output, else csv
    long long width = 0; ///< as above
    std::string output;  ///< empty for standard output
    bool force = false;
    bool printJob = false;
};
/// Row by row scoring with a transform model.
void score(const ScoreOptions& options, const CommonOptions& common);

/// Without an order file, all tables and charts of the document.
struct RenderOptions
{
    std::string document; ///< a file, or "-"
    std::string order;
    std::string format;  ///< text or html; empty: by the name of the output
    std::string output;  ///< empty for standard output
    long long width = 0; ///< as above
    bool force = false;
    bool debug = false;
};
/// A result document as text or page.
void render(const RenderOptions& options, const CommonOptions& common);

/// A job, the datasets that it reads and the files that it hands out, by the job's names.
struct RunOptions
{
    std::string job;               ///< a file, or "-"
    std::vector<std::string> data; ///< NAME=FILE
    std::vector<std::string> save; ///< NAME=FILE
    std::string userMissing;       ///< exclude or keep; empty: exclude, with a warning
    bool force = false;
    bool printJob = false;
};
/// A job text.
void runJob(const RunOptions& options, const CommonOptions& common);

/// A source of geometry: a shape file, a zip archive of one, or a layer of a map service.
struct MapOptions
{
    std::string source; ///< a file, or an address with "://"
    std::optional<int> layer;
};

/// Of a service without a layer, its layers.
struct MapInfoOptions
{
    MapOptions map;
    std::string format; ///< text, csv, json or html; empty: by the name of the output, else text
    std::string output; ///< empty for standard output
    bool force = false;
    long long width = 0; ///< as above
    bool showDataModel = false;
};
/// What is known of a source of geometry.
void mapInfo(const MapInfoOptions& options, const CommonOptions& common);

/// Between which coordinate systems, each a name, an id, or empty, and where to.
struct GeoJsonOptions
{
    std::string from;
    std::string to;
    std::string output;    ///< "-" for standard output
    std::string dataModel; ///< empty for none
    bool force = false;
};
/// What to write as GeoJSON, and how.
struct MapConvertOptions
{
    MapOptions map;
    GeoJsonOptions result;
};
/// A source of geometry as GeoJSON.
void mapConvert(const MapConvertOptions& options, const CommonOptions& common);

/// The variables of a dataset that hold coordinates.
struct MapPointsOptions
{
    InputOptions input;
    std::string x;
    std::string y;
    std::string z; ///< empty for points of a plane
    GeoJsonOptions result;
};
/// The points that variables of a dataset give, as GeoJSON.
void mapPoints(const MapPointsOptions& options, const CommonOptions& common);

/// A map and a dataset, with the fields by which they are to be joined.
struct MapMatchOptions
{
    MapOptions map;
    InputOptions input;
    std::vector<std::string> keys; ///< MAPFIELD=VARIABLE, or a name for both
    int limit = 20;                ///< rows of each list, -1 for all
    std::string format = "text";   ///< text, csv or json
    long long width = 0;           ///< as above
};
/// How well the keys of a map match those of a dataset.
void mapMatch(const MapMatchOptions& options, const CommonOptions& common);

/// What was found where, and what is missing; throws for a part without which no job runs.
void doctor(const std::string& format);
