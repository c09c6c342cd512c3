#pragma once

#include <string_view>

#include "hvhost/input/HeadRecords.h"

/// Whether the text is a date such as 31.01.2024, 1/31/2024 or 2024/01/31, alone or with a time, or
/// a timestamp with a zone. The values of its parts are not checked.
bool isOtherDate(std::string_view text);

/// Whether all values of some column are such dates.
bool hasOtherDates(const HeadRecords& head, bool hasHeader);
