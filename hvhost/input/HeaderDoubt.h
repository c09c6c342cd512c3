#pragma once

#include <string>

#include "hvhost/input/HeadRecords.h"

/// Why the first record looks like data and not like names; empty if it does not. It looks like
/// data if all its fields in columns of numbers, dates or times are such values as well. Years in
/// ascending order are names. If all columns are texts, it looks like data if it has a text twice
/// or if each of its texts occurs again in its column.
std::string headerDoubt(const HeadRecords& head);
