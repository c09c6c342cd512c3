#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "hvhost/describe/Description.h"
#include "hvhost/describe/GroupTables.h"
#include "hvhost/show/RenderOrder.h"

/// Tables and charts that compare the groups of a description: for all numbers one table with a row
/// for each group, and a box plot and histograms of each; for each text with few values, the
/// percentages in each group. A result document of its own, because the engine compares no groups.
class GroupComparison
{
public:
    /// Adds a group under its name. All groups have the same fields. `histograms` has the bins of
    /// each field, or is empty.
    void add(const std::string& name, const GroupDescription& group,
             std::vector<std::vector<ComparedBin>> histograms);

    /// Whether there is something to compare: two groups, and a field that can be compared.
    bool hasContent() const;
    /// The result document. Its parts are those of `order`.
    std::string document() const;
    /// The order for all parts. `withCharts`: also for the charts.
    RenderOrder order(bool withCharts) const;

private:
    bool hasHistograms(std::size_t field) const;

    std::vector<std::string> _names;
    std::vector<std::vector<FieldDescription>> _groups;             ///< the fields of each group
    std::vector<std::vector<std::vector<ComparedBin>>> _histograms; ///< by group, then by field
};
