#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/temporal/preparation/CellValues.h"
#include "components/temporal/preparation/DimensionValue.h"
#include "components/temporal/preparation/GapFilling.h"
#include "components/temporal/preparation/TimeCalendar.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The name of the time if the order of the records is the time.
inline constexpr const char* kCaseCount = "$casecount";

/// The source of the time of a record.
enum class TimeSource
{
    Field,       ///< a date, time or timestamp
    Cyclic,      ///< numbers, the outermost period first
    RecordNumber ///< the order of the records, counted by combination of dimension values
};

/// What is asked of the preparation, checked against the fields of its input. What is absent is
/// found in the data.
struct TsdpSettings
{
    Fields dimensions;
    Fields metrics;
    TimeSource source = TimeSource::Field;
    Fields timeFields;                            ///< one field, or the cyclic ones
    std::optional<std::vector<TimeUnit>> periods; ///< what the cyclic fields count
    std::optional<IntervalSpec> interval;
    std::optional<Moment> start; ///< of the point with the number 0; not with cyclic fields
    std::optional<std::vector<std::int64_t>> startNumbers; ///< the same of cyclic fields
    Aggregation defaultAggregation = Aggregation::Mean;
    std::vector<Aggregation> aggregations; ///< of the metrics
    GapFilling filling = GapFilling::Linear;
    double maxShare = 0.25; ///< of filled points among those from the first value to the last
    std::optional<std::vector<DimensionValues>> values; ///< of each dimension, by code from 1
    std::optional<std::vector<std::string>> series;     ///< ids
};

/// Reads the configuration of the call and reports unknown settings. Throws
/// JobError.
TsdpSettings tsdpSettings(StepCall& call);

const char* wordOf(Aggregation aggregation);
const char* wordOf(GapFilling filling);
/// The unit of that word; nothing for any other word.
std::optional<TimeUnit> timeUnitOf(const std::string& word);
/// Reads an interval and reports unknown settings. Throws JobError for one that
/// makes no sense.
IntervalSpec intervalOf(const Settings& interval, const MessageSink& message);

} // namespace EmbeddedHV
