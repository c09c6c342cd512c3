#pragma once

#include <string>
#include <vector>

class HVRawDataIterator;
class HVSimpleFile;

/// The two sides of the joins: a file with the map's attributes, and the dataset. Names are UTF-8.
struct MatchSides
{
    const HVSimpleFile& mapData;
    const HVSimpleFile& mapModel;
    HVRawDataIterator& iterator;
    std::vector<std::string> mapKeys;
    std::vector<std::string> dataKeys;
};

/// One question and its answer: the keys of one side that have a partner on the other side, or
/// those that have none.
struct MatchedValues
{
    bool mapSide;
    bool unmatched;
    int maxRows;
    std::vector<std::vector<std::string>>& rows;
};

/// The key fields of the side that the question is about.
const std::vector<std::string>& keysOf(const MatchSides& sides, const MatchedValues& wanted);

/// The job that answers a question: it reduces both sides to their distinct keys and joins them.
/// The rows go to the file `data`, their data model to `model`.
std::string matchJob(const MatchSides& sides, const MatchedValues& wanted, const HVSimpleFile& data,
                     const HVSimpleFile& model);
