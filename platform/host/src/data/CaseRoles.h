#pragma once

#include <cstddef>
#include <vector>

/// The columns of a data source that have a role for all cases, numbered from 0.
struct CaseRoles
{
    int weight = -1;        ///< of the weight variable; -1 for none
    std::vector<int> split; ///< of the split variables, in order

    /// Answers GetNSplitVars of a data source.
    int splitCount() const { return static_cast<int>(split.size()); }
    /// Answers GetSplitVarIndex: -1 for a position that does not exist.
    int splitAt(int position) const
    {
        const auto place = static_cast<std::size_t>(position);
        return position < 0 || place >= split.size() ? -1 : split[place];
    }
};
