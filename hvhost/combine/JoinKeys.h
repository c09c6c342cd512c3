#pragma once

#include <string>
#include <vector>

#include "hvhost/combine/CombinedInputs.h"

/// A pair of fields that must be equal, by columns of the two datasets.
struct JoinKey
{
    std::string option; ///< with its value, for messages
    int leftColumn;
    int rightColumn;
    std::string left;  ///< the name of the field
    std::string right; ///< the name of the field
};

/// The keys of the options KEY or LEFT=RIGHT. Throws CommandFault (Usage) for an unknown name, a
/// field that is named twice, and for types that cannot be equal.
std::vector<JoinKey> joinKeys(const std::vector<std::string>& texts, const CombinedInputs& inputs);

/// The names of one side of the keys.
std::vector<std::string> leftNames(const std::vector<JoinKey>& keys);
std::vector<std::string> rightNames(const std::vector<JoinKey>& keys);
