#pragma once

#include <optional>
#include <string>
#include <vector>

/// Options of all commands that run jobs.
struct CommonOptions
{
    bool quiet = false;
    bool verbose = false;
    bool strict = false;
    std::string progress = "auto"; ///< auto, always or never
    std::string logFile;
    std::string traceDirectory;
    std::optional<double> timeout; ///< seconds
    std::string engine;            ///< the address of a cluster; empty: the embedded engine
    std::string engineScratch;     ///< a folder of the cluster for intermediate records
    std::string engineSums;        ///< exact or double; empty: exact
};

/// Options of the commands that read one file.
struct InputOptions
{
    std::string path;                  ///< "-" for standard input
    std::string kind;                  ///< a word of kDataKinds; empty: from the extension
    std::string kindOption = "--from"; ///< the option for the kind; empty: the command has none
    std::string password;
    std::string passwordFile;
    std::string dataModel;
    std::string encoding;      ///< of a csv file; empty: UTF-8
    std::string separator;     ///< of a csv file; empty: detected from its first line
    bool decimalComma = false; ///< the numbers of a csv file are written as 1.234,5
    std::string sheet;         ///< of an xlsx file: its name or number; empty: the first one
    std::string userMissing;   ///< exclude or keep; empty: the default of the command
    std::string weight;        ///< a variable of the dataset; empty: the file's own
    // How a csv file is written; see TextImport.
    std::vector<std::string> missing;
    std::string missingOption = "--missing"; ///< the option for them
    std::vector<std::string> types;          ///< NAME=TYPE
    std::string dateFormat;
    std::string thousands;
    std::string comment;
    std::optional<long long> skippedLines;
    bool direct = false;   ///< the engine itself reads the file
    bool served = false;   ///< the host reads it and serves its cases
    bool noHeader = false; ///< without both, the first record decides
    bool header = false;
    std::optional<long long> first;     ///< read only this number of records
    std::optional<long long> maxErrors; ///< -1: any number
};

/// Options of the commands that write one file.
struct OutputOptions
{
    std::string path; ///< "-" for standard output
    std::string kind; ///< as above
    std::string password;
    std::string passwordFile;
    std::string dataModel;
    bool force = false;
};

/// A field that a command derives: its name, and an expression over the record x.
struct Derivation
{
    std::string name;
    std::string expression;
};

/// How the records are changed before the command uses them.
struct RecordOptions
{
    std::vector<std::string> derivations; ///< NAME=EXPRESSION
    std::string where;
    std::optional<long long> limit; ///< use at most this number of records, after all else here
    bool distinct = false;          ///< only the first of equal records
    std::vector<std::string> distinctBy; ///< fields whose values make records equal; empty: all
    std::string sample;                  ///< N or P%; empty: all records
    long long seed = 0;                  ///< of the sample
    std::vector<std::string> sort;       ///< FIELD, or FIELD:desc
    std::optional<long long> top;        ///< use this number of records with the greatest values
    std::vector<std::string> topBy;      ///< the fields with these values
    std::vector<std::string> keep;       ///< fields, in this order; empty: all

    /// Whether --limit can already end the reading, because nothing before it needs more records.
    bool limitsReading() const
    {
        return limit && where.empty() && !distinct && distinctBy.empty() && sample.empty() &&
               sort.empty() && !top;
    }
};

/// Options of the commands that generate a job with one input and one output.
struct JobOptions
{
    InputOptions input;
    OutputOptions output;
    RecordOptions records;
    bool printJob = false;
};
