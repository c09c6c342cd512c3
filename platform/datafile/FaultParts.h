#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace datafile {

/// A line and a column of a text, both from 1. 0 means unknown, or the whole line.
struct TextPlace
{
    std::uint64_t line = 0;
    std::uint64_t column = 0; ///< in characters
};

/// What an error or a message is about, as data. A member that is empty or 0 does not apply.
/// docs/contracts.md describes the members for programs.
struct FaultParts
{
    std::string step = {};     ///< the name of a step, or several names in one text
    std::string file = {};     ///< a path
    TextPlace inFile = {};     ///< in a text file
    TextPlace inJob = {};      ///< in the text of the job
    std::string iterator = {}; ///< the name of a row iterator
    std::uint64_t record = 0;  ///< of the row iterator or of the input of the step, from 1
    std::uint64_t group = 0;   ///< of records, as the step numbers them, from 1
    std::string field = {};
    std::vector<std::string> series = {}; ///< the name of a time series: dimension values, metric
    std::string setting = {};             ///< its path, for example output[3].function
    std::string namedBy = {};             ///< the path of the setting with the name of `field`
    std::string name = {};                ///< another name that the text quotes
    std::optional<std::int64_t> limit = {};
    std::string kind = {};      ///< distinguishes errors of one id, see FaultIds.h
    bool hasSuggestion = false; ///< the text ends with the most similar name
    std::string what = {};      ///< the text without its place
};

/// The sentence for the user, composed from the parts in the first of these forms that applies:
///     step STEP, line L, column C: WHAT                       inJob is known
///     STEP: FILE:L:C: WHAT                                    file is known
///     STEP: field "F" of the row iterator "I", record N: WHAT iterator, record and field are known
///     STEP: the row iterator "I" failed at record N: WHAT     iterator and record are known
///     STEP: the setting "S" WHAT                              setting is known
///     STEP: WHAT
/// Without a step, the text begins after it. If the group is known, "group N: " follows the step.
std::string sentenceOf(const FaultParts& parts);

} // namespace datafile
