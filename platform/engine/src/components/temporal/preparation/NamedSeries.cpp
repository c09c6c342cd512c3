#include "components/temporal/preparation/NamedSeries.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "components/temporal/base/DocumentPlace.h"
#include "components/temporal/preparation/SeriesId.h"
#include "components/temporal/preparation/TsdpSettings.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostNamedValues = 60'000'000;
constexpr CFField::StorageType kDocumentStorages[] = {CFField::Integer, CFField::Real,
                                                      CFField::String,  CFField::Date,
                                                      CFField::Time,    CFField::Timestamp};

/// Reads the parts of the document that name series and points.
class NamedSeriesReader
{
public:
    NamedSeriesReader(const Json& document, const DocumentSource& source,
                      const MessageSink& message)
        : _place(document, source, errors::kPreparationFile), _settings(_place.member("settings")),
          _output(_place.member("output")), _source(source), _message(message)
    {
    }

    NamedSeries read()
    {
        _result.axis.fields = fieldsOf(_output.member("timeFields"));
        _result.dimensions = fieldsOf(_output.member("dimensions"));
        _result.axis.points = _output.member("points").integer(1, INT64_MAX);
        const DocumentPlace metrics = _settings.member("metricFieldList");
        for (std::size_t i = 0; i < metrics.listSize(); ++i)
            _result.metrics.push_back(checkedName(metrics.element(i)));
        readTime();
        for (const CFField& dimension : _result.dimensions)
            _result.values.push_back(
                valuesOf(_settings.member("dimValueLists").member(dimension.GetName().c_str()),
                         dimension.GetStorage()));
        const DocumentPlace series = _settings.member("seriesList");
        for (std::size_t i = 0; i < series.listSize(); ++i)
            readSeries(series.element(i));
        return std::move(_result);
    }

private:
    static Fields fieldsOf(const DocumentPlace& list)
    {
        Fields fields;
        for (std::size_t i = 0; i < list.listSize(); ++i) {
            const DocumentPlace field = list.element(i);
            fields.emplace_back(checkedName(field.member("name")), CFField::Nominal,
                                storageOfWord(field.member("storage")));
        }
        return fields;
    }

    static const std::string& checkedName(const DocumentPlace& name)
    {
        if (name.text().empty() || name.text().find('\0') != std::string::npos)
            name.refuse("is no name of a field");
        return name.text();
    }

    static CFField::StorageType storageOfWord(const DocumentPlace& word)
    {
        for (const CFField::StorageType storage : kDocumentStorages)
            if (word.text() == WordOf(storage))
                return storage;
        word.refuse("is no type of values");
    }

    void readTime()
    {
        if (_result.axis.fields.empty())
            _output.refuse("names no field of the time");
        const auto interval = _settings.optionalMember("timeInterval");
        if (!interval) {
            if (_result.axis.fields.front().GetName() != kCaseCount)
                _settings.refuse("has no interval of time");
            return;
        }
        if (const auto periods = _settings.optionalMember("cyclicPeriods"))
            readPeriods(*periods);
        try {
            const IntervalSpec spec =
                intervalOf(Settings(interval->value(), _source.step, "timeInterval"),
                           [this](const std::string& id, const FaultParts& parts) {
                               _message(id, inDocument(parts));
                           });
            const Moment start = startOf(_settings.member("start"));
            if (!isWritable(start) || !counts(spec, start))
                _settings.member("start").refuse("is at no time that counts");
            _result.axis.calendar.emplace(spec, start);
        } catch (const JobError& error) {
            throw JobError(errors::kPreparationFile, inDocument(error.parts()));
        }
    }

    /// The parts of a message about a setting, with the document that has the setting.
    FaultParts inDocument(FaultParts parts) const
    {
        // A reader of the document has said so.
        if (!parts.file.empty() || parts.setting.empty())
            return parts;
        const FaultParts place =
            _source.parts("the setting \"" + parts.setting + "\" " + parts.what);
        parts.file = place.file;
        parts.what = place.what;
        return parts;
    }

    void readPeriods(const DocumentPlace& periods)
    {
        std::vector<TimeUnit> units;
        for (std::size_t i = 0; i < periods.listSize(); ++i) {
            const auto unit = timeUnitOf(periods.element(i).text());
            if (!unit || (i > 0 && *unit <= units[i - 1]))
                periods.refuse("does not go from long periods to short ones");
            units.push_back(*unit);
        }
        if (units.empty() || units.size() != _result.axis.fields.size())
            periods.refuse("has not as many periods as there are fields");
        _result.axis.clock.emplace(std::move(units));
    }

    Moment startOf(const DocumentPlace& start) const
    {
        std::optional<Moment> moment;
        if (_result.axis.clock) {
            std::vector<std::int64_t> numbers;
            for (const CFField& field : _result.axis.fields)
                numbers.push_back(
                    start.member(field.GetName().c_str()).integer(INT64_MIN, INT64_MAX));
            moment = _result.axis.clock->momentOf(numbers);
        } else {
            moment = momentOfText(start.text());
        }
        if (!moment)
            start.refuse("is no point of time");
        return *moment;
    }

    static DimensionValues valuesOf(const DocumentPlace& list, CFField::StorageType storage)
    {
        DimensionValues values;
        for (std::size_t i = 0; i < list.listSize(); ++i) {
            const auto value = dimensionValueOf(list.element(i).value(), storage);
            if (!value)
                list.element(i).refuse("is no value of the field");
            values.push_back(*value);
        }
        return values;
    }

    void readSeries(const DocumentPlace& place)
    {
        std::vector<int> numbers = numbersOfSeriesId(place.text(), _result.dimensions.size());
        bool isKnown =
            !numbers.empty() && numbers.back() <= static_cast<int>(_result.metrics.size());
        for (std::size_t i = 0; isKnown && i < _result.dimensions.size(); ++i)
            isKnown = numbers[i] <= static_cast<int>(_result.values[i].size());
        if (!isKnown)
            place.refuse("is no id of a series of these dimensions and metrics");
        const auto metric = static_cast<std::size_t>(numbers.back()) - 1;
        numbers.pop_back();
        _result.series[place.text()] = {std::move(numbers), metric};
    }

    DocumentPlace _place;
    DocumentPlace _settings;
    DocumentPlace _output;
    const DocumentSource& _source;
    const MessageSink& _message;
    NamedSeries _result;
};

} // namespace

NamedSeries namedSeriesOf(const std::string& document, const DocumentSource& source,
                          const MessageSink& message)
{
    const Json root = parsedDocument(document, kMostNamedValues, source, errors::kPreparationFile);
    return NamedSeriesReader(root, source, message).read();
}

} // namespace EmbeddedHV
