#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "UserCaseFile.h"

namespace bench {

/// What the dictionary of a dataset asks of whoever serves its cases.
enum class CaseRules
{
    None, ///< ten numbers
    All   ///< ten numbers too: a weight, a date, one with user-missing values, and seven more
};

/// Writes a dataset of the shared rows in the host's own form, through the host.
void writeCases(const std::string& path, CaseRules rules, std::size_t cases);

/// A data file as the host opens it.
std::unique_ptr<UserInputCaseFile> openCases(const std::string& path);

} // namespace bench
