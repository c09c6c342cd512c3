#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "UserCaseFile.h"
#include "VexaDataSource.h"

namespace bench {

/// Writes a dataset of the shared rows in the host's own form, through the host.
void writeCases(const std::string& path, std::size_t cases);

/// A data file as the host opens it.
std::unique_ptr<UserInputCaseFile> openCases(const std::string& path);

/// What the dictionary of a dataset asks of whoever serves its cases.
enum class CaseRules
{
    None, ///< ten numbers
    Some  ///< ten numbers, of which v0 is the weight, v1 a date, and v2 has user-missing values
};

/// Cases that the host holds in memory: the least that reading one can cost. The values, row after
/// row, are borrowed.
class MemoryCases : public VEXA_DataSource
{
public:
    MemoryCases(const std::vector<double>& values, CaseRules rules);

    int ColumnCount() const override { return static_cast<int>(_variables.size()); }
    const VEXA_Variable& GetVariable(int column) const override
    {
        return _variables.at(static_cast<std::size_t>(column));
    }
    int GetWeightVarIndex() const override { return _rules == CaseRules::None ? -1 : 0; }
    int GetNSplitVars() const override { return 0; }
    int GetSplitVarIndex(int) const override { return -1; }
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor* monitor) const override;

private:
    const std::vector<double>& _values;
    CaseRules _rules;
    std::vector<VEXA_Variable> _variables;
};

} // namespace bench
