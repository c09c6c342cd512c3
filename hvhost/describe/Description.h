#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "CFMetaData.h"
#include "hvhost/describe/CaseGroups.h"

/// Facts by name, as in the engine's document of statistics.
using Facts = std::map<std::string, std::string>;

/// The fact with this name; empty if it is unknown.
std::optional<std::string> factOf(const Facts& facts, const std::string& name);

/// The statistics of one field.
struct FieldDescription
{
    CFField field; ///< with its distinct values, unless there are too many
    Facts facts;
    /// The frequency of each distinct value, in order. The engine counts only texts.
    std::vector<Facts> counts;
    /// The frequencies of the values that are declared missing. Records without a value come last.
    std::vector<Facts> missingCounts;
    std::vector<Facts> percentiles;    ///< empty, or one for each percent
    Facts outliers;                    ///< empty if they were not requested or are not defined
    std::vector<Facts> outlyingValues; ///< the farthest ones

    /// Whether its values are categories rather than amounts.
    bool isCategorical() const;
    /// Whether it has more distinct values than were requested.
    bool isCut() const { return !facts.contains("distinct"); }
};

/// Variables that are missing together in some cases.
struct MissingPatternDescription
{
    std::vector<std::string> variables;
    Facts facts;
};

/// One group of cases.
struct GroupDescription
{
    std::vector<GroupKey> key;
    Facts facts; ///< of its records
    /// Cases without a positive weight; for csv and json also without a finite weight.
    int leftOut = 0;
    std::vector<FieldDescription> fields;
    std::vector<Facts> pairs;
    std::vector<MissingPatternDescription> missingPatterns; ///< empty if not requested
    nlohmann::ordered_json intervals = nlohmann::ordered_json::array();
    /// Cases without a finite weight, if the engine counted them.
    int withoutFiniteWeight = 0;
};

/// What `hvhost describe` shows, for all groups.
struct Description
{
    std::string file;
    std::string weight; ///< empty for none
    std::vector<std::string> split;
    int mostDistinct = 0; ///< distinct values of a field that are listed; -1: any number
    std::vector<std::string> percents; ///< of the percentiles, ascending
    bool hasOutliers = false;
    bool hasPairs = false;
    bool hasMissingPatterns = false;
};

/// Combines the engine's documents about the fields of `model`: the statistics, and the time
/// intervals, which may be empty. Throws std::runtime_error for invalid documents.
GroupDescription readDescription(const CFMetaData& model, const std::string& statXml,
                                 const std::string& intervals);
/// The same for documents about several groups.
std::vector<GroupDescription> readDescriptions(const std::string& statXml,
                                               const std::string& intervals);
