#pragma once

#include <string>
#include <vector>

/// Which categories of a place are shown, by their labels. Once either list has an entry, those
/// stay that the one has and the other has not.
struct CategoryFilter
{
    std::vector<std::string> hidden;
    std::vector<std::string> shown;
};

/// What the caller of a table sets.
struct PivotSettings
{
    CategoryFilter rows;
    CategoryFilter columns; ///< for layers too
    std::string caption;    ///< takes the place of the table's own
    bool translates = false;
    bool supportsSplits = true;
};
