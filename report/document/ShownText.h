#pragma once

#include <string>
#include <string_view>

#include "report/ReportExport.h"

struct TnContent;

/// The text of a label or a cell as all output shows it. A date with the year first has hyphens, as
/// in charts and their data: 2026-11-24. All other texts are unchanged.
std::string shownText(const TnContent& content);

/// The same for a number in a cell, with groups of digits.
std::string shownNumber(const TnContent& content);

/// A number with narrow blanks between groups of three digits of its whole part, which are no
/// decimal mark in any language. A whole part of up to four digits, for example a year, scientific
/// notation, and a number that has marks already stay unchanged.
REPORT_API std::string withDigitGroups(std::string_view number);
