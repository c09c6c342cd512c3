#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/temporal/preparation/PeriodClock.h"
#include "components/temporal/preparation/TimeCalendar.h"
#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// The points of time of prepared records, numbered from 0, with what the fields of the time hold
/// at each. Without a calendar, they are numbers of records.
struct TimeAxis
{
    Fields fields; ///< a date, time or timestamp; the cyclic fields; or `$casecount`
    std::optional<TimeCalendar> calendar;
    std::optional<PeriodClock> clock; ///< of cyclic fields
    std::int64_t points = 0;          ///< in the data

    bool isCyclic() const { return clock.has_value(); }
    bool isRecordNumber() const { return !calendar; }
};

} // namespace EmbeddedHV
