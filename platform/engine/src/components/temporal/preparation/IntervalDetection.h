#pragma once

#include <string>
#include <vector>

#include "components/ComponentQueries.h"
#include "components/temporal/preparation/TimeCalendar.h"

namespace EmbeddedHV {

/// The interval on which the moments lie, which are in ascending order and different. Days and
/// hours on which none of them lies are none that count, if enough of the others have one. Throws
/// JobError if there are fewer than two moments, or if they lie on no whole number of seconds.
IntervalSpec detectSpec(JobContext& context, const std::string& component,
                        const std::vector<Moment>& moments);

/// The weekdays and hours that count for moments of that interval: those of the interval itself,
/// unless the moments leave out some of them and fill the others.
IntervalSpec withWorkingTime(IntervalSpec spec, const std::vector<Moment>& moments);

/// The first point of the intervals of moments in ascending order: the first moment if all of them
/// are points counted from it, else the beginning of its interval by the calendar. Completes the
/// day of the month. Nothing if no moment counts.
std::optional<Moment> firstPoint(IntervalSpec& spec, const std::vector<Moment>& moments);

} // namespace EmbeddedHV
