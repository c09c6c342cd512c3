#pragma once

#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "hvhost/describe/Description.h"

/// A bin of a histogram. With a weight, the count is a sum of weights.
struct ComparedBin
{
    double from = 0;
    double to = 0;
    double count = 0;
};

/// The groups of a description. Borrows the lists, which are parallel. There is at least one group,
/// and all have the same fields.
struct GroupsCompared
{
    const std::vector<std::string>& names;
    const std::vector<std::vector<FieldDescription>>& fields;
    /// For each group, by field: the bins of its histogram, or none.
    const std::vector<std::vector<std::vector<ComparedBin>>>& histograms;

    std::size_t size() const { return names.size(); }
    const FieldDescription& at(std::size_t group, std::size_t field) const
    {
        return fields[group][field];
    }
    /// The label of a field, or its name.
    std::string titleOf(std::size_t field) const;
    /// A fact of a field in a group as a number; nullopt if it is not defined.
    std::optional<double> number(std::size_t group, std::size_t field, const char* fact) const;
};

/// A text field with few values: the values that occur in a group, and how they are shown.
struct ComparedTexts
{
    struct Value
    {
        std::string text;
        std::string label;
    };
    std::size_t field = 0;
    std::vector<Value> values;
    /// The sum of weights, or the number of cases: by group, then by value.
    std::vector<std::vector<double>> counts;

    /// The percentage of the valid values of a group; nullopt if it has none.
    std::optional<double> percent(std::size_t group, std::size_t value) const;
};

/// The fields with statistics of numbers.
std::vector<std::size_t> numberFields(const GroupsCompared& groups);
/// The texts that can be compared. Those with too many values for columns are left out.
std::vector<ComparedTexts> comparedTexts(const GroupsCompared& groups);

/// One table for all numbers: a row for each field and group.
nlohmann::ordered_json numbersTable(const GroupsCompared& groups,
                                    const std::vector<std::size_t>& fields);
/// A row for each group, and a column for each value.
nlohmann::ordered_json sharesTable(const GroupsCompared& groups, const ComparedTexts& texts);
