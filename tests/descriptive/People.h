#pragma once

#include "HostConversions.h"
#include "data/SourceRows.h"

/// Weighted cases, a month and a year apart.
inline MemorySource people()
{
    const auto day = [](int days) { return GetBaseDateNumber() + 86400.0 * days; };
    MemorySource source({text("town", 4), numeric("size"), numeric("day", kFormatDateYearFirst),
                         numeric("year"), numeric("persons")},
                        {{"Bonn", 2.0, day(0), 2020.0, 3.0},
                         {"Ulm", 1.0, day(31), 2021.0, 1.0},
                         {"Bonn", 4.0, day(59), 2023.0, 1.0}});
    source.weight = 4;
    return source;
}
