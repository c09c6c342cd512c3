#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "VexaDataSource.h"

/// The cases of a procedure, with the detection of split groups.
class ProcedureCases : public ProcDSIterator
{
public:
    /// The split of the file: its columns and the receivers of group changes.
    struct Group
    {
        std::vector<int> columns;
        std::vector<VEXA_Variable> variables;
        /// Called with the values of each new group, as texts.
        std::function<void(std::vector<std::string>)> begun;
        /// Whether the end of a group stops the reading.
        std::function<bool()> isWatched;
    };

    /// Null `cases` means no cases.
    ProcedureCases(std::unique_ptr<VEXA_InputCaseIterator> cases, Group group);

    int NextCase() override;
    double GetNumericValue(int column) const override { return _cases->GetNumericValue(column); }
    const char* GetStringValue(int column) const override { return _cases->GetStringValue(column); }
    const OBS* GetObsPointer(int column) const override { return _cases->GetObsPointer(column); }
    long long GetCaseCount() const override { return _cases ? _cases->GetCaseCount() : 0; }
    bool SplitGroupEnd() const override { return _groupEnd; }
    void StartNextGroup() override;

private:
    bool isSameGroup() const;

    std::unique_ptr<VEXA_InputCaseIterator> _cases;
    Group _group;
    std::vector<std::vector<OBS>> _values; ///< of the split variables in the current group
    bool _groupEnd = false;
};
