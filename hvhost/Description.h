#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "CFMetaData.h"
#include "CaseGroups.h"

/// Facts by their names in the engine's document of statistics, as it writes them.
using Facts = std::map<std::string, std::string>;

/// The fact of a name; nothing if it is not known.
std::optional<std::string> factOf(const Facts& facts, const std::string& name);

/// What the engine found out of one field.
struct FieldDescription
{
    CFField field; ///< with the distinct values, unless there are too many
    Facts facts;
    /// How often each distinct value occurs, in their order; the engine counts texts only.
    std::vector<Facts> counts;
    /// The same of the values that are declared missing; what has no value at all comes last.
    std::vector<Facts> missingCounts;

    /// Whether its values are categories, not amounts.
    bool isCategorical() const;
    /// Whether it has more distinct values than were asked for.
    bool isCut() const { return !facts.contains("distinct"); }
};

/// One group of cases.
struct GroupDescription
{
    std::vector<GroupKey> key;
    Facts facts;     ///< of its records
    int leftOut = 0; ///< cases without a weight that is positive, and finite where figures are told
    std::vector<FieldDescription> fields;
    nlohmann::ordered_json intervals = nlohmann::ordered_json::array();
};

/// What `hvhost describe` shows.
struct Description
{
    std::string file;
    std::string weight; ///< empty for none
    std::vector<std::string> split;
    int mostDistinct = 0; ///< values of a field that are told, -1 for any number
    std::vector<GroupDescription> groups;
};

/// Puts together what the engine tells of the fields of `model`: its document of statistics, and
/// that of the time intervals, which may be empty. Throws std::runtime_error for documents that are
/// not what they should be.
GroupDescription readDescription(const CFMetaData& model, const std::string& statXml,
                                 const std::string& intervals);
