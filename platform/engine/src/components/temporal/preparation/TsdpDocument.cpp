#include "components/temporal/preparation/TsdpDocument.h"

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kPointsBetweenChecks = 10000;

Json namesOfFields(const Fields& fields)
{
    Json names = Json::array();
    for (const CFField& field : fields)
        names.push_back(field.GetName());
    return names;
}

/// The word of a data model for the storage, as in "timestamp".
Json fieldJson(const CFField& field)
{
    Json json = Json::object();
    json["name"] = field.GetName();
    json["storage"] = WordOf(field.GetStorage());
    return json;
}

Json intervalJson(const IntervalSpec& spec)
{
    Json json = Json::object();
    json["unit"] = wordOf(spec.unit);
    json["increment"] = spec.increment;
    if (spec.hasWorkingDays()) {
        json["workingDays"] = Json::array();
        for (int day = 1; day <= 7; ++day)
            if (((spec.workingDays >> (day - 1)) & 1U) != 0)
                json["workingDays"].push_back(day);
    }
    if (spec.hasWorkingHours())
        json["workingHours"] = {{"from", spec.fromHour}, {"to", spec.toHour}};
    if (spec.dayOfMonth != 0)
        json["dayOfMonth"] = spec.dayOfMonth;
    return json;
}

/// Makes the document part by part.
class TsdpDocumentMaker
{
public:
    TsdpDocumentMaker(const TsdpSettings& settings, const PreparationResult& result,
                      const std::function<void()>& throwIfStopped)
        : _settings(settings), _result(result), _throwIfStopped(throwIfStopped)
    {
    }

    std::string text() const
    {
        Json document = Json::object();
        document["settings"] = settings();
        document["output"] = output();
        return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
    }

private:
    const TimeAxis& axis() const { return _result.axis; }

    Json settings() const
    {
        Json json = Json::object();
        json["dimFieldList"] = namesOfFields(_settings.dimensions);
        json["metricFieldList"] = namesOfFields(_settings.metrics);
        const bool isField = _settings.source == TimeSource::Field;
        json["dateTimeField"] = isField ? axis().fields.front().GetName() : "";
        json["cyclicFieldList"] = isField ? Json::array() : namesOfFields(axis().fields);
        if (axis().clock) {
            json["cyclicPeriods"] = Json::array();
            for (const TimeUnit period : axis().clock->periods())
                json["cyclicPeriods"].push_back(wordOf(period));
        }
        if (axis().calendar) {
            json["timeInterval"] = intervalJson(axis().calendar->spec());
            json["start"] = pointJson(0);
        }
        json["aggregation"] = aggregation();
        json["missingValues"] = {{"method", wordOf(_settings.filling)},
                                 {"maxShare", _settings.maxShare}};
        json["dimValueLists"] = valueLists();
        json["seriesList"] = Json::array();
        for (const SeriesOutcome& series : _result.series)
            json["seriesList"].push_back(series.id);
        return json;
    }

    Json aggregation() const
    {
        Json fields = Json::object();
        for (std::size_t i = 0; i < _settings.metrics.size(); ++i)
            if (_settings.aggregations[i] != _settings.defaultAggregation)
                fields[_settings.metrics[i].GetName()] = wordOf(_settings.aggregations[i]);
        Json json = Json::object();
        json["default"] = wordOf(_settings.defaultAggregation);
        json["fields"] = std::move(fields);
        return json;
    }

    Json valueLists() const
    {
        Json lists = Json::object();
        for (std::size_t i = 0; i < _settings.dimensions.size(); ++i) {
            Json& list = lists[_settings.dimensions[i].GetName()] = Json::array();
            for (const CFDatum& value : _result.values[i])
                list.push_back(dimensionJson(value, _settings.dimensions[i].GetStorage()));
        }
        return lists;
    }

    /// A text, or an object of numbers by cyclic field.
    Json pointJson(std::int64_t index) const
    {
        const Moment moment = axis().calendar->pointAt(index).value_or(0);
        if (!axis().clock)
            return momentText(moment, axis().fields.front().GetStorage());
        const std::vector<std::int64_t> numbers = axis().clock->numbersOf(moment);
        Json point = Json::object();
        for (std::size_t i = 0; i < numbers.size(); ++i)
            point[axis().fields[i].GetName()] = numbers[i];
        return point;
    }

    Json timeVariable() const
    {
        if (axis().isRecordNumber()) {
            Json numbers = Json::array();
            for (std::int64_t i = 1; i <= axis().points; ++i)
                numbers.push_back(i);
            Json json = Json::object();
            json[kCaseCount] = std::move(numbers);
            return json;
        }
        Json json = axis().clock ? Json::object() : Json::array();
        if (axis().clock)
            for (const CFField& field : axis().fields)
                json[field.GetName()] = Json::array();
        for (std::int64_t i = 0; i < axis().points; ++i) {
            if (i % kPointsBetweenChecks == 0)
                _throwIfStopped();
            Json point = pointJson(i);
            if (!axis().clock)
                json.push_back(std::move(point));
            else
                for (const CFField& field : axis().fields)
                    json[field.GetName()].push_back(point[field.GetName()]);
        }
        return json;
    }

    Json output() const
    {
        Json json = Json::object();
        json["timeVariable"] = timeVariable();
        json["timeFields"] = fieldList(axis().fields);
        json["dimensions"] = fieldList(_settings.dimensions);
        json["points"] = axis().points;
        if (axis().calendar)
            json["interval"] = intervalJson(axis().calendar->spec());
        json["series"] = Json::array();
        for (const SeriesOutcome& series : _result.series)
            json["series"].push_back({{"id", series.id},
                                      {"name", series.name},
                                      {"observed", series.observed},
                                      {"filled", series.filled}});
        json["leftOut"] = Json::array();
        for (const SeriesLeftOut& series : _result.leftOut)
            json["leftOut"].push_back(
                {{"id", series.id}, {"name", series.name}, {"reason", series.reason}});
        return json;
    }

    static Json fieldList(const Fields& fields)
    {
        Json list = Json::array();
        for (const CFField& field : fields)
            list.push_back(fieldJson(field));
        return list;
    }

    const TsdpSettings& _settings;
    const PreparationResult& _result;
    const std::function<void()>& _throwIfStopped;
};

} // namespace

std::string tsdpDocument(const TsdpSettings& settings, const PreparationResult& result,
                         const std::function<void()>& throwIfStopped)
{
    return TsdpDocumentMaker(settings, result, throwIfStopped).text();
}

} // namespace EmbeddedHV
