#pragma once

#include <cstddef>

#include <nlohmann/json.hpp>

struct ComparedTexts;
struct GroupsCompared;

/// Quartiles and range of a number, with a row for each group on a common axis.
nlohmann::ordered_json boxChart(const GroupsCompared& groups, std::size_t field);
/// A bar for each group, divided by the values of a text.
nlohmann::ordered_json sharesChart(const GroupsCompared& groups, const ComparedTexts& texts);
