#pragma once

#include <string>

#include "hvhost/input/HeadRecords.h"

/// What the first record may be, if it does not look like names.
struct HeaderDoubt
{
    std::string reason;  ///< empty: it looks like names
    bool isData = false; ///< it is more likely a record
};

/// Judges the first record. It is data if all its fields in columns of numbers, dates or times are
/// such values as well. Years in ascending order are names, and numbers from 0 or 1 on may be. If
/// all columns are texts, the record may be data if it has a text twice or if each of its texts
/// occurs again in its column.
HeaderDoubt headerDoubt(const HeadRecords& head);
