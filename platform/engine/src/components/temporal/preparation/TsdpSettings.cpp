#include "components/temporal/preparation/TsdpSettings.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/temporal/preparation/PeriodClock.h"
#include "datafile/ColumnTypes.h"

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kMostIncrement = 10000000;

template <class Value>
struct TsdpWord
{
    const char* word;
    Value value;
};

constexpr TsdpWord<Aggregation> kAggregationWords[] = {
    {"sum", Aggregation::Sum},     {"mean", Aggregation::Mean},   {"min", Aggregation::Minimum},
    {"max", Aggregation::Maximum}, {"first", Aggregation::First}, {"last", Aggregation::Last},
    {"mode", Aggregation::Mode},
};
constexpr TsdpWord<GapFilling> kFillingWords[] = {
    {"linear", GapFilling::Linear},
    {"neighbours", GapFilling::Neighbours},
    {"last", GapFilling::Last},
    {"none", GapFilling::None},
};
constexpr TimeUnit kTimeUnits[] = {TimeUnit::Year,   TimeUnit::Quarter, TimeUnit::Month,
                                   TimeUnit::Week,   TimeUnit::Day,     TimeUnit::Hour,
                                   TimeUnit::Minute, TimeUnit::Second};

template <class Value, std::size_t count>
Value valueOfWord(const TsdpWord<Value> (&words)[count], const Settings& settings,
                  const std::string& key, const std::string& word)
{
    std::string known;
    for (const TsdpWord<Value>& entry : words) {
        if (word == entry.word)
            return entry.value;
        known += std::string(known.empty() ? "" : ", ") + entry.word;
    }
    settings.refuse(key, "is \"" + word + "\"; known are " + known);
}

template <class Value, std::size_t count>
const char* wordOfValue(const TsdpWord<Value> (&words)[count], Value value)
{
    return std::find_if(std::begin(words), std::end(words),
                        [value](const auto& entry) { return entry.value == value; })
        ->word;
}

TimeUnit unitOfSetting(const Settings& settings, const std::string& key, const std::string& word)
{
    if (const auto unit = timeUnitOf(word))
        return *unit;
    std::vector<std::string_view> known;
    for (const TimeUnit unit : kTimeUnits)
        known.emplace_back(wordOf(unit));
    settings.refuse(key, "has \"" + word +
                             "\", which is not year, quarter, month, week, day, hour, minute "
                             "or second" +
                             base::suggestion(word, known));
}

unsigned workingDaysOf(const Settings& interval)
{
    const std::string key = "workingDays";
    if (!interval.has(key))
        return IntervalSpec::kEveryDay;
    const Json& list = interval.neededList(key);
    unsigned days = 0;
    for (const Json& day : list) {
        if (!day.is_number_integer() || day < 1 || day > 7)
            interval.refuse(key, "has " + day.dump() +
                                     ", which is no weekday from 1, Monday, to 7, Sunday");
        days |= 1U << (day.get<int>() - 1);
    }
    if (days == 0)
        interval.refuse(key, "names no day");
    return days;
}

void readWorkingHours(const Settings& interval, IntervalSpec& spec, const MessageSink& message)
{
    const std::string key = "workingHours";
    if (!interval.has(key))
        return;
    const Settings hours = interval.neededObject(key);
    const auto from = hours.integer("from").value_or(0);
    const auto to = hours.integer("to").value_or(IntervalSpec::kHoursOfDay);
    if (from < 0 || to > IntervalSpec::kHoursOfDay || from >= to)
        interval.refuse(key, "goes from " + std::to_string(from) + " to " + std::to_string(to) +
                                 ", which are no hours of one day");
    spec.fromHour = static_cast<int>(from);
    spec.toHour = static_cast<int>(to);
    hours.reportOthers(message);
}

void checkSpec(const Settings& interval, const IntervalSpec& spec)
{
    const std::string unit = wordOf(spec.unit);
    if (spec.hasWorkingDays() && spec.unit < TimeUnit::Day)
        interval.refuse("workingDays", "is given for intervals of the unit " + unit +
                                           ": only days and shorter units can leave days out");
    if (spec.hasWorkingHours() && spec.unit <= TimeUnit::Day)
        interval.refuse("workingHours", "is given for intervals of the unit " + unit +
                                            ": only hours and shorter units can leave hours out");
    const std::int64_t hours = spec.toHour - spec.fromHour;
    if ((spec.hasWorkingDays() || spec.hasWorkingHours()) && spec.unit > TimeUnit::Day &&
        spec.increment > hours * momentsOf(TimeUnit::Hour) / momentsOf(spec.unit))
        interval.refuse("increment", "makes intervals that are longer than a working day");
}

/// Reads the settings one by one.
class TsdpSettingsReader
{
public:
    explicit TsdpSettingsReader(StepCall& call) : _call(call), _settings(call.settings())
    {
        for (const CFField& field : call.input()->fields)
            _fields.emplace(field.GetName(), &field);
    }

    TsdpSettings read()
    {
        readTime();
        readDimensions();
        readMetrics();
        if (_result.source != TimeSource::RecordNumber) {
            readInterval();
            readStart();
        }
        readAggregation();
        readMissingValues();
        readValues();
        readSeries();
        _settings.reportOthers(_call.context.message);
        return std::move(_result);
    }

private:
    const CFField& field(const std::string& name) const
    {
        const auto found = _fields.find(name);
        return found == _fields.end() ? _call.inputField(name) : *found->second;
    }

    void claim(const std::string& key, const std::string& name)
    {
        if (!_claimed.insert(name).second)
            throw JobError(errors::kTsdpFieldTwice,
                           {.step = _call.name,
                            .field = name,
                            .setting = key,
                            .what = "names the field \"" + name +
                                    "\", which has been named before: a field is a time, a "
                                    "dimension or a metric, and that once"});
    }

    [[noreturn]] void refuseField(const std::string& key, const CFField& field,
                                  const std::string& wanted) const
    {
        _settings.refuse(key, "names \"" + field.GetName() + "\", which is " +
                                  typeWordOf(field.GetStorage()) + ", not " + wanted);
    }

    /// The names in a list, without empty ones: a list of one empty name is that of no field.
    std::vector<std::string> names(const std::string& key) const
    {
        std::vector<std::string> names;
        if (!_settings.has(key))
            return names;
        const Json& list = _settings.neededList(key);
        for (std::size_t i = 0; i < list.size(); ++i)
            if (std::string name = _settings.textAt(list, key, i); !name.empty())
                names.push_back(std::move(name));
        return names;
    }

    void readTime()
    {
        const std::string key = "dateTimeField";
        const std::string name = _settings.text(key).value_or("");
        const std::vector<std::string> cyclic = names("cyclicFieldList");
        if (!name.empty())
            readTimeField(key, name);
        else if (cyclic == std::vector<std::string>{kCaseCount})
            _result.source = TimeSource::RecordNumber;
        else if (!cyclic.empty())
            readCyclicFields(cyclic);
        else
            throw JobError(errors::kTsdpNoTime,
                           {.step = _call.name,
                            .what = "no field has the time: name one in \"dateTimeField\", "
                                    "several in \"cyclicFieldList\", or \"$casecount\" there "
                                    "for the order of the records"});
    }

    void readTimeField(const std::string& key, const std::string& name)
    {
        const CFField& time = field(name);
        if (!isMoment(time))
            refuseField(key, time, "a date, a time or a timestamp");
        claim(key, name);
        _result.source = TimeSource::Field;
        _result.timeFields.push_back(time);
    }

    void readCyclicFields(const std::vector<std::string>& cyclic)
    {
        const std::string key = "cyclicFieldList";
        _result.source = TimeSource::Cyclic;
        for (const std::string& name : cyclic) {
            const CFField& period = field(name);
            if (!isNumber(period))
                refuseField(key, period, "a number");
            claim(key, name);
            _result.timeFields.push_back(period);
        }
        readPeriods();
    }

    void readPeriods()
    {
        const std::string key = "cyclicPeriods";
        if (!_settings.has(key))
            return;
        const Json& list = _settings.neededList(key);
        std::vector<TimeUnit> periods;
        for (std::size_t i = 0; i < list.size(); ++i) {
            periods.push_back(unitOfSetting(_settings, key, _settings.textAt(list, key, i)));
            if (i > 0 && periods[i] <= periods[i - 1])
                _settings.refuse(key, "does not go from long periods to short ones");
        }
        if (periods.size() != _result.timeFields.size())
            _settings.refuse(key, "has " + std::to_string(periods.size()) + " periods for " +
                                      std::to_string(_result.timeFields.size()) + " cyclic fields");
        _result.periods = std::move(periods);
    }

    void readDimensions()
    {
        const std::string key = "dimFieldList";
        for (const std::string& name : names(key)) {
            const CFField& dimension = field(name);
            claim(key, name);
            _result.dimensions.push_back(dimension);
        }
    }

    void readMetrics()
    {
        const std::string key = "metricFieldList";
        _settings.neededList(key);
        for (const std::string& name : names(key)) {
            const CFField& metric = field(name);
            if (!isNumber(metric))
                refuseField(key, metric, "a number");
            claim(key, name);
            _result.metrics.push_back(metric);
        }
        if (_result.metrics.empty())
            _settings.refuse(key, "names no field: there is nothing to make series of");
    }

    void readInterval()
    {
        const std::string key = "timeInterval";
        if (!_settings.has(key))
            return;
        const Settings interval = _settings.neededObject(key);
        _result.interval = intervalOf(interval, _call.context.message);
        checkUnit(interval, _result.interval->unit);
    }

    /// Points closer together than the fields can tell would have one name.
    void checkUnit(const Settings& interval, TimeUnit unit) const
    {
        const CFField& last = _result.timeFields.back();
        const bool isDate =
            _result.source == TimeSource::Field && last.GetStorage() == CFField::Date;
        const bool isTime =
            _result.source == TimeSource::Field && last.GetStorage() == CFField::Time;
        if ((isDate && unit > TimeUnit::Day) || (_result.periods && unit > _result.periods->back()))
            interval.refuse("unit", "is " + std::string(wordOf(unit)) +
                                        ", which is shorter than what \"" + last.GetName() +
                                        "\" tells apart");
        if (isTime && unit <= TimeUnit::Day)
            interval.refuse("unit", "is " + std::string(wordOf(unit)) + ", but \"" +
                                        last.GetName() + "\" has times of one day");
    }

    void readStart()
    {
        const std::string key = "start";
        if (!_settings.has(key))
            return;
        if (_result.source == TimeSource::Cyclic)
            return readStartNumbers(_settings.neededObject(key));
        const std::string text = _settings.neededText(key);
        _result.start = momentOfText(text);
        if (!_result.start)
            _settings.refuse(key, "is \"" + text +
                                      "\", which is no date and time such as 2024-01-31 or "
                                      "2024-01-31 10:30:00");
    }

    void readStartNumbers(const Settings& start)
    {
        std::vector<std::int64_t> numbers;
        for (const CFField& period : _result.timeFields) {
            const auto number = start.integer(period.GetName());
            if (!number)
                _settings.refuse("start", "has no number for \"" + period.GetName() + "\"");
            numbers.push_back(*number);
        }
        start.reportOthers(_call.context.message);
        _result.startNumbers = std::move(numbers);
    }

    void readAggregation()
    {
        const std::string key = "aggregation";
        _result.aggregations.assign(_result.metrics.size(), _result.defaultAggregation);
        const auto given = _call.configuration.find(key);
        if (given == _call.configuration.end() || given->is_object())
            return _settings.has(key) ? readAggregations(_settings.neededObject(key)) : void();
        if (const auto word = _settings.text(key))
            setDefault(valueOfWord(kAggregationWords, _settings, key, *word));
    }

    void setDefault(Aggregation aggregation)
    {
        _result.defaultAggregation = aggregation;
        _result.aggregations.assign(_result.metrics.size(), aggregation);
    }

    void readAggregations(const Settings& aggregation)
    {
        if (const auto word = aggregation.text("default"))
            setDefault(valueOfWord(kAggregationWords, aggregation, "default", *word));
        if (aggregation.has("fields")) {
            const Settings fields = aggregation.neededObject("fields");
            for (std::size_t i = 0; i < _result.metrics.size(); ++i) {
                const std::string& name = _result.metrics[i].GetName();
                if (const auto word = fields.text(name))
                    _result.aggregations[i] = valueOfWord(kAggregationWords, fields, name, *word);
            }
            fields.reportOthers(_call.context.message);
        }
        aggregation.reportOthers(_call.context.message);
    }

    void readMissingValues()
    {
        const std::string key = "missingValues";
        if (!_settings.has(key))
            return;
        const Settings missing = _settings.neededObject(key);
        if (const auto word = missing.text("method"))
            _result.filling = valueOfWord(kFillingWords, missing, "method", *word);
        if (const auto share = missing.number("maxShare")) {
            _result.maxShare =
                share->IsReal() ? share->GetReal() : static_cast<double>(share->GetInteger());
            if (!(_result.maxShare >= 0 && _result.maxShare <= 1))
                missing.refuse("maxShare", "is " + share->ToString(-1) + ", not from 0 to 1");
        }
        missing.reportOthers(_call.context.message);
    }

    void readValues()
    {
        const std::string key = "dimValueLists";
        if (!_settings.has(key))
            return;
        const Settings lists = _settings.neededObject(key);
        std::vector<DimensionValues> values;
        for (const CFField& dimension : _result.dimensions)
            values.push_back(valuesOf(lists, dimension));
        lists.reportOthers(_call.context.message);
        if (!_result.dimensions.empty())
            _result.values = std::move(values);
    }

    static DimensionValues valuesOf(const Settings& lists, const CFField& dimension)
    {
        const std::string& key = dimension.GetName();
        DimensionValues values;
        std::set<std::string> known;
        for (const Json& json : lists.neededList(key)) {
            const auto value = dimensionValueOf(json, dimension.GetStorage());
            const std::string shown = json.dump(-1, ' ', false, Json::error_handler_t::replace);
            if (!value)
                lists.refuse(key, "has " + shown + ", which is no value of a field of the type " +
                                      typeWordOf(dimension.GetStorage()));
            if (!known.insert(dimensionText(*value, dimension.GetStorage())).second)
                lists.refuse(key, "has " + shown + " twice");
            values.push_back(*value);
        }
        return values;
    }

    void readSeries()
    {
        const std::string key = "seriesList";
        if (!_settings.has(key))
            return;
        const Json& list = _settings.neededList(key);
        if (!_result.dimensions.empty() && !_result.values)
            _settings.refuse(key, "is given without \"dimValueLists\", which the numbers of the "
                                  "series refer to");
        std::vector<std::string> ids;
        for (std::size_t i = 0; i < list.size(); ++i)
            ids.push_back(_settings.textAt(list, key, i));
        _result.series = std::move(ids);
    }

    StepCall& _call;
    Settings _settings;
    std::unordered_map<std::string_view, const CFField*> _fields;
    std::set<std::string> _claimed;
    TsdpSettings _result;
};

} // namespace

const char* wordOf(Aggregation aggregation)
{
    return wordOfValue(kAggregationWords, aggregation);
}

const char* wordOf(GapFilling filling)
{
    return wordOfValue(kFillingWords, filling);
}

std::optional<TimeUnit> timeUnitOf(const std::string& word)
{
    const auto* found = std::find_if(std::begin(kTimeUnits), std::end(kTimeUnits),
                                     [&](TimeUnit unit) { return word == wordOf(unit); });
    return found == std::end(kTimeUnits) ? std::nullopt : std::optional(*found);
}

IntervalSpec intervalOf(const Settings& interval, const MessageSink& message)
{
    IntervalSpec spec;
    spec.unit = unitOfSetting(interval, "unit", interval.neededText("unit"));
    spec.increment = interval.integer("increment").value_or(1);
    if (spec.increment < 1 || spec.increment > kMostIncrement)
        interval.refuse("increment", "is " + std::to_string(spec.increment) + ", not from 1 to " +
                                         std::to_string(kMostIncrement));
    spec.workingDays = workingDaysOf(interval);
    readWorkingHours(interval, spec, message);
    spec.dayOfMonth = static_cast<int>(
        std::clamp<std::int64_t>(interval.integer("dayOfMonth").value_or(0), -1, 32));
    if (spec.dayOfMonth < 0 || spec.dayOfMonth > 31 ||
        (spec.dayOfMonth != 0 && monthsOf(spec.unit) == 0))
        interval.refuse("dayOfMonth",
                        "is no day from 1 to 31, or the unit is shorter than a month");
    checkSpec(interval, spec);
    interval.reportOthers(message);
    return spec;
}

TsdpSettings tsdpSettings(StepCall& call)
{
    return TsdpSettingsReader(call).read();
}

} // namespace EmbeddedHV
