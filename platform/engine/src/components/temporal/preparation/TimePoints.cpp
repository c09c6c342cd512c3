#include "components/temporal/preparation/TimePoints.h"

#include <algorithm>
#include <map>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/descriptives/PeriodFields.h"
#include "components/temporal/base/FewMessages.h"
#include "components/temporal/preparation/DimensionValue.h"
#include "components/temporal/preparation/IntervalDetection.h"
#include "components/temporal/preparation/PreparationLimits.h"
#include "datafile/SqlQuoting.h"
#include "duckdb/NewTable.h"
#include "runtime/KeyedCells.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostPointMessages = 20;

/// What the fields of the time hold at some records.
struct FoundTime
{
    std::optional<Moment> moment; ///< nothing if it is no point of time
    std::int64_t firstRecord = 0; ///< from 0
    std::int64_t records = 0;
};

class PointNumbering
{
public:
    PointNumbering(JobContext& context, const std::string& component, const PreparationTable& table,
                   const TsdpSettings& settings)
        : _context(context), _component(component), _table(table), _settings(settings),
          _queries(context, component),
          _messages(context.message, errors::kTsdpNoPoint, kMostPointMessages,
                    "points of time with records that are left out")
    {
    }

    TimePoints run()
    {
        _result.axis.fields = _settings.timeFields;
        if (_settings.source == TimeSource::Cyclic)
            findPeriods();
        collect();
        if (_moments.empty())
            throw JobError(
                errors::kTsdpFewPoints,
                {.step = _component, .what = "no record has a point of time in " + namesOfTime()});
        makeCalendar();
        number();
        return std::move(_result);
    }

private:
    std::string namesOfTime() const
    {
        std::string names;
        for (const CFField& field : _settings.timeFields)
            names += (names.empty() ? "\"" : ", \"") + field.GetName() + "\"";
        return names;
    }

    void findPeriods()
    {
        auto periods = _settings.periods;
        if (!periods) {
            DescriptivesSettings asked;
            asked.points = {_settings.timeFields};
            const InputTable distinct(_context.newTable("hv_periods_"), asked);
            std::string columns;
            for (std::size_t i = 0; i < _settings.timeFields.size(); ++i)
                columns += std::string(i == 0 ? "" : ", ") + PreparationTable::timeColumn(i) +
                           " AS " + quotedIdentifier(_settings.timeFields[i].GetName());
            _queries.run(
                distinct.creation("SELECT DISTINCT " + columns + " FROM " + _table.name()));
            periods = periodsOf(_queries, distinct, _settings.timeFields);
        }
        if (!periods)
            throw JobError(errors::kTsdpInterval,
                           {.step = _component,
                            .what = "what " + namesOfTime() +
                                    " count is unknown, or they do not go from the longest "
                                    "period to the shortest: set \"cyclicPeriods\", or name "
                                    "\"$casecount\" for the order of the records"});
        _result.axis.clock.emplace(*periods);
    }

    /// In time: numbers of long periods come before those of short ones, as they sort.
    void collect()
    {
        if (_table.groups()) {
            for (const std::int64_t key : _table.groups()->times())
                takeKey(key);
            checkTimeCount(_component, static_cast<std::int64_t>(_found.size()));
            return;
        }
        const std::size_t width = _settings.timeFields.size();
        _queries.stream(_table.times(), [&](duck::Chunk& chunk) {
            for (std::size_t row = 0; row < chunk.rows(); ++row)
                take(chunk, row, width);
            checkTimeCount(_component, static_cast<std::int64_t>(_found.size()));
        });
    }

    void take(const duck::Chunk& chunk, std::size_t row, std::size_t width)
    {
        FoundTime found;
        const std::vector<std::int64_t> keys = keysAt(chunk, row);
        found.firstRecord = dimensionValueAt(chunk, width, row, CFField::Integer).GetInteger();
        found.records = dimensionValueAt(chunk, width + 1, row, CFField::Integer).GetInteger();
        if (std::find(keys.begin(), keys.end(), kMissingKey) == keys.end())
            found.moment = momentOf(keys);
        if (found.moment)
            _moments.push_back(*found.moment);
        _keys.insert(_keys.end(), keys.begin(), keys.end());
        _found.push_back(found);
    }

    void takeKey(std::int64_t key)
    {
        FoundTime found;
        if (key != kMissingKey)
            found.moment = momentOf({key});
        if (found.moment)
            _moments.push_back(*found.moment);
        _keys.push_back(key);
        _found.push_back(found);
    }

    std::optional<Moment> momentOf(const std::vector<std::int64_t>& keys) const
    {
        if (_result.axis.clock)
            return _result.axis.clock->momentOf(keys);
        const bool isDate = _settings.timeFields.front().GetStorage() == CFField::Date;
        const Moment moment = isDate ? keys.front() * kMomentsOfDay : keys.front();
        return isWritable(moment) ? std::optional(moment) : std::nullopt;
    }

    void makeCalendar()
    {
        IntervalSpec spec =
            _settings.interval ? *_settings.interval : detectSpec(_context, _component, _moments);
        if (const auto start = givenStart()) {
            if (!counts(spec, *start))
                throw JobError(errors::kTsdpInterval,
                               {.step = _component,
                                .setting = "start",
                                .what = "is on a day or at an hour that does not count by "
                                        "\"timeInterval\""});
            _result.axis.calendar.emplace(spec, *start);
            return;
        }
        const auto start = firstPoint(spec, _moments);
        if (!start)
            throw JobError(errors::kTsdpInterval,
                           {.step = _component,
                            .what = "no record is on a day and at an hour that count by the "
                                    "setting \"timeInterval\""});
        _result.axis.calendar.emplace(spec, *start);
    }

    std::optional<Moment> givenStart() const
    {
        if (!_settings.startNumbers)
            return _settings.start;
        const auto start = _result.axis.clock->momentOf(*_settings.startNumbers);
        if (!start)
            throw JobError(errors::kTsdpInterval,
                           {.step = _component, .setting = "start", .what = "is no point of time"});
        return start;
    }

    void number()
    {
        if (_table.groups())
            numberGroups();
        else
            makeTable();
        if (!_noPoints.empty() && !_table.hasNumbers())
            findFirstRecords();
        tellNoPoints();
        checkPointCount(_component, _result.axis.points);
        if (_result.axis.points < 2)
            throw JobError(errors::kTsdpFewPoints,
                           {.step = _component,
                            .what = "the data have " + std::to_string(_result.axis.points) +
                                    " points of time, and a series needs at least two"});
    }

    void numberGroups()
    {
        for (std::size_t place = 0; place < _found.size(); ++place)
            _result.intervals.push_back(pointOf(place));
        _result.times = _keys;
    }

    /// The number of the interval, which counts as a point of time. Nothing, which is noted, for a
    /// time at no point.
    std::optional<std::int64_t> pointOf(std::size_t place)
    {
        const auto index = indexOf(_found[place]);
        if (!index || *index < 0) {
            _noPoints.push_back(place);
            return std::nullopt;
        }
        _result.axis.points = std::max(_result.axis.points, *index + 1);
        return index;
    }

    void makeTable()
    {
        Fields columns;
        for (std::size_t i = 0; i < _settings.timeFields.size(); ++i)
            columns.emplace_back(PreparationTable::timeColumn(i), CFField::Ordinal, storageOf(i));
        columns.emplace_back("i", CFField::Ordinal, CFField::Integer);
        columns.emplace_back("r", CFField::Ordinal, CFField::Integer);
        NewTable table(_context, _component, columns);
        for (std::size_t place = 0; place < _found.size(); ++place)
            if (const auto index = pointOf(place))
                addPoint(table, place, *index);
        _result.table = quotedIdentifier(table.finish()->table);
    }

    CFField::StorageType storageOf(std::size_t place) const
    {
        return _result.axis.clock ? CFField::Integer : _settings.timeFields[place].GetStorage();
    }

    std::optional<std::int64_t> indexOf(const FoundTime& found) const
    {
        return found.moment ? _result.axis.calendar->indexOf(*found.moment) : std::nullopt;
    }

    void addPoint(NewTable& table, std::size_t place, std::int64_t index)
    {
        const std::size_t width = _settings.timeFields.size();
        for (std::size_t i = 0; i < width; ++i)
            addDimensionValue(table, CFDatum(_keys[place * width + i]), storageOf(i));
        table.addInteger(index);
        table.addInteger(static_cast<std::int64_t>(place));
        table.endRecord();
    }

    /// For the times at no point, also the numbers of their records.
    void findFirstRecords()
    {
        std::map<std::vector<std::int64_t>, FoundTime*> times;
        const std::size_t width = _settings.timeFields.size();
        for (const std::size_t place : _noPoints) {
            const auto keys = _keys.begin() + static_cast<std::ptrdiff_t>(place * width);
            FoundTime& found = _found[place];
            found.records = 0;
            found.firstRecord = INT64_MAX;
            times.emplace(std::vector(keys, keys + static_cast<std::ptrdiff_t>(width)), &found);
        }
        _queries.stream(_table.firstRecords(), [&](duck::Chunk& chunk) {
            for (std::size_t row = 0; row < chunk.rows(); ++row)
                if (const auto found = times.find(keysAt(chunk, row)); found != times.end())
                    addRecords(chunk, row, *found->second);
        });
    }

    void addRecords(const duck::Chunk& chunk, std::size_t row, FoundTime& found) const
    {
        const std::size_t width = _settings.timeFields.size();
        const CFDatum first = dimensionValueAt(chunk, width, row, CFField::Integer);
        const CFDatum records = dimensionValueAt(chunk, width + 1, row, CFField::Integer);
        found.firstRecord = std::min(found.firstRecord, first.GetInteger());
        found.records += records.GetInteger();
    }

    /// What the fields of the time hold in a row.
    std::vector<std::int64_t> keysAt(const duck::Chunk& chunk, std::size_t row) const
    {
        std::vector<std::int64_t> keys;
        for (std::size_t i = 0; i < _settings.timeFields.size(); ++i) {
            const CFDatum value = dimensionValueAt(chunk, i, row, storageOf(i));
            keys.push_back(value.IsNull() ? kMissingKey : value.GetInteger());
        }
        return keys;
    }

    /// The first ones by their records.
    void tellNoPoints()
    {
        const auto told = static_cast<std::ptrdiff_t>(
            std::min<std::size_t>(_noPoints.size(), kMostPointMessages));
        std::partial_sort(_noPoints.begin(), _noPoints.begin() + told, _noPoints.end(),
                          [this](std::size_t left, std::size_t right) {
                              return _found[left].firstRecord < _found[right].firstRecord;
                          });
        for (std::size_t i = 0; i < _noPoints.size(); ++i)
            if (i < kMostPointMessages)
                tellNoPoint(_found[_noPoints[i]]);
            else
                _messages.send({});
        _messages.finish();
    }

    void tellNoPoint(const FoundTime& found)
    {
        const bool isEarly = indexOf(found).has_value();
        const std::string time = found.moment
                                     ? "the time " + momentText(*found.moment, CFField::Timestamp)
                                     : "no valid time in " + namesOfTime();
        const std::string reason = isEarly        ? ", which is before the first point of time"
                                   : found.moment ? ", which is in no interval that counts"
                                                  : "";
        const std::string others =
            found.records > 1 ? ", as have " + std::to_string(found.records - 1) + " more" : "";
        const auto record = static_cast<std::uint64_t>(found.firstRecord) + 1;
        _messages.send({.step = _component,
                        .record = record,
                        .what = "record " + std::to_string(record) + " has " + time + reason +
                                others + ": left out"});
    }

    JobContext& _context;
    const std::string& _component;
    const PreparationTable& _table;
    const TsdpSettings& _settings;
    ComponentQueries _queries;
    FewMessages _messages;
    std::vector<FoundTime> _found;      ///< in time
    std::vector<std::size_t> _noPoints; ///< places of those that are left out
    std::vector<std::int64_t> _keys;    ///< of all that was found, one after the other
    std::vector<Moment> _moments;       ///< ascending
    TimePoints _result;
};

} // namespace

TimePoints numberPoints(JobContext& context, const std::string& component,
                        const PreparationTable& table, const TsdpSettings& settings)
{
    return PointNumbering(context, component, table, settings).run();
}

} // namespace EmbeddedHV
