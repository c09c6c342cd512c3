#pragma once

#include <cstddef>

#include <nlohmann/json.hpp>

struct ComparedTexts;
struct GroupsCompared;

/// Quartiles and range of a number, with a row for each group on a common axis.
nlohmann::ordered_json boxChart(const GroupsCompared& groups, std::size_t field);
/// A histogram of a number for each group, one below the other on a common axis.
nlohmann::ordered_json histogramsChart(const GroupsCompared& groups, std::size_t field);
/// A bar for each group, divided by the values of a text.
nlohmann::ordered_json sharesChart(const GroupsCompared& groups, const ComparedTexts& texts);
