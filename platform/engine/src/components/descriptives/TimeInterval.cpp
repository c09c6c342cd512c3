#include "components/descriptives/TimeInterval.h"

#include <numeric>

#include "base/CivilTime.h"
#include "components/descriptives/PeriodFields.h"
#include "datafile/ColumnTypes.h"

namespace EmbeddedHV {
namespace {

/// In the order of TimeUnit.
constexpr const char* kUnitWords[] = {"year", "quarter", "month",  "week",
                                      "day",  "hour",    "minute", "second"};

/// A unit and its number of steps.
struct UnitSteps
{
    TimeUnit unit;
    std::int64_t steps;
};

/// The steps in which distances are counted. Three scales, because months have no fixed number of
/// days, and times of day repeat.
struct Scale
{
    const char* sql; ///< SQL for the step of v
    std::vector<UnitSteps> units;
};

const Scale& months()
{
    static const Scale scale = {
        "CAST(12 * year(v) + month(v) AS BIGINT)",
        {{TimeUnit::Year, 12}, {TimeUnit::Quarter, 3}, {TimeUnit::Month, 1}}};
    return scale;
}

const Scale& days()
{
    static const Scale scale = {"CAST(CAST(v AS DATE) - DATE '1970-01-01' AS BIGINT)",
                                {{TimeUnit::Week, 7}, {TimeUnit::Day, 1}}};
    return scale;
}

const Scale& microseconds()
{
    static const Scale scale = {"epoch_us(v)",
                                {{TimeUnit::Hour, base::kMicrosecondsPerHour},
                                 {TimeUnit::Minute, base::kMicrosecondsPerMinute},
                                 {TimeUnit::Second, base::kMicrosecondsPerSecond}}};
    return scale;
}

/// SQL for the timestamp of a date, a time of day (on 1970-01-01) or a timestamp.
std::string timestampSql(const std::string& column, CFField::StorageType storage)
{
    return storage == CFField::Time ? "(DATE '1970-01-01' + " + column + ")"
                                    : "CAST(" + column + " AS TIMESTAMP)";
}

/// SQL that tests whether all points are on the same day of the month, or on the last day of
/// shorter months. `last` is the greatest day of all points, `most` the last day of a point's
/// month. Two points with one such month are not enough: 28 February and 29 March may simply be 29
/// days apart.
constexpr const char* kIsMonthly =
    "coalesce(CAST(bool_and(day(v) = least(last, most)) AND "
    "(count(*) FILTER (day(v) = last) <> 1 OR bool_and(day(v) = most)) AS INTEGER), 0)";

/// Detects one interval.
class Detection
{
public:
    Detection(const ComponentQueries& queries, const InputTable& table, const Fields& point)
        : _queries(queries), _table(table), _point(point)
    {
        for (const CFField& field : point) {
            _result.fields.push_back(field.GetName());
            _columns.push_back(table.column(field));
        }
    }

    TimeInterval run()
    {
        const CFField::StorageType storage = _point.front().GetStorage();
        const bool isNumbers = storage == CFField::Integer || storage == CFField::Real;
        if (isNumbers) {
            const auto periods = periodsOf(_queries, _table, _point);
            if (!periods)
                return _result;
            _result.periods = *periods;
        }
        _moment = isNumbers ? timestampOf(_result.periods, _columns)
                            : timestampSql(_columns.front(), storage);
        const Scale& scale = lookAtPoints(isNumbers ? CFField::Timestamp : storage);
        if (isNumbers)
            readPeriods();
        if (_result.distinct > 1)
            measure(scale);
        return _result;
    }

private:
    std::string points() const
    {
        return "(SELECT v, count(*) AS n FROM (SELECT " + _moment + " AS v FROM " + _table.name() +
               ") WHERE isfinite(v) GROUP BY v)";
    }

    /// Counts the points and finds the scale that fits them.
    const Scale& lookAtPoints(CFField::StorageType storage)
    {
        const std::string type = sqlTypeOf(storage);
        duck::Result rows = _queries.run(
            "SELECT count(*), coalesce(sum(n), 0), CAST(CAST(min(v) AS " + type +
            ") AS VARCHAR), CAST(CAST(max(v) AS " + type +
            ") AS VARCHAR), count(DISTINCT CAST(v AS TIME)), " + std::string(kIsMonthly) +
            ", (SELECT count(*) FROM " + _table.name() +
            ") FROM (SELECT *, max(day(v)) OVER () AS last, day(last_day(v)) AS most FROM " +
            points() + ")");
        const std::int64_t records = rows.integer(1, 0);
        _result.distinct = rows.integer(0, 0);
        _result.points = _result.distinct;
        _result.duplicates = records - _result.distinct;
        _result.missing = rows.integer(6, 0) - records;
        _result.start = rows.text(2, 0);
        _result.end = rows.text(3, 0);
        if (rows.integer(4, 0) > 1)
            return microseconds();
        return rows.integer(5, 0) != 0 ? months() : days();
    }

    void readPeriods()
    {
        if (_result.distinct == 0)
            return;
        std::string columns;
        for (const char* function : {"arg_min", "arg_max"})
            for (const std::string& column : _columns)
                columns += std::string(columns.empty() ? "" : ", ") + "CAST(" + function + "(" +
                           column + ", v) AS BIGINT)";
        duck::Result rows = _queries.run("SELECT " + columns + " FROM (SELECT *, " + _moment +
                                         " AS v FROM " + _table.name() + ") WHERE isfinite(v)");
        for (std::size_t i = 0; i < _columns.size(); ++i) {
            _result.startPeriods.push_back(rows.integer(i, 0));
            _result.endPeriods.push_back(rows.integer(_columns.size() + i, 0));
        }
    }

    void measure(const Scale& scale)
    {
        duck::Result gaps = _queries.run(
            "SELECT g, count(*) FROM (SELECT i - lag(i) OVER (ORDER BY i) AS g FROM (SELECT " +
            std::string(scale.sql) + " AS i FROM " + points() +
            ")) WHERE g IS NOT NULL GROUP BY g");
        std::int64_t step = 0;
        std::int64_t span = 0;
        for (std::size_t row = 0; row < gaps.rows(); ++row) {
            // The largest step that divides all gaps. A gap may be any multiple of it.
            step = std::gcd(step, gaps.integer(0, row));
            span += gaps.integer(0, row) * gaps.integer(1, row);
        }
        _result.points = span / step + 1;
        _result.missingPoints = _result.points - _result.distinct;
        for (const UnitSteps& unit : scale.units)
            if (step % unit.steps == 0 || &unit == &scale.units.back()) {
                _result.unit = unit.unit;
                _result.increment = static_cast<double>(step) / static_cast<double>(unit.steps);
                return;
            }
    }

    const ComponentQueries& _queries;
    const InputTable& _table;
    const Fields& _point;
    std::vector<std::string> _columns;
    std::string _moment; ///< SQL for a record's point of time
    TimeInterval _result;
};

} // namespace

const char* wordOf(TimeUnit unit)
{
    return kUnitWords[static_cast<std::size_t>(unit)];
}

TimeInterval detectInterval(const ComponentQueries& queries, const InputTable& table,
                            const Fields& point)
{
    return Detection(queries, table, point).run();
}

} // namespace EmbeddedHV
