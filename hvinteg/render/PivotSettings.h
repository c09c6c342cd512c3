#pragma once

#include <string>
#include <vector>

/// Selects categories by their labels. If either list has entries, a category is shown if it is in
/// `shown` and not in `hidden`.
struct CategoryFilter
{
    std::vector<std::string> hidden;
    std::vector<std::string> shown;
};

/// Settings of a table by the caller.
struct PivotSettings
{
    CategoryFilter rows;
    CategoryFilter columns; ///< also for layers
    std::string caption;    ///< replaces the table's own caption
    bool translates = false;
    bool supportsSplits = true;
};
