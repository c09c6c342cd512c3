#include "components/temporal/explanation/NamedRecords.h"

#include <limits>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/ListText.h"
#include "components/temporal/explanation/PointLabels.h"
#include "components/temporal/preparation/DimensionKey.h"
#include "components/temporal/scoring/ScoreStage.h"
#include "datafile/SqlQuoting.h"

namespace EmbeddedHV {
namespace {

/// The text of a column. A whole number has no point, however it is stored.
std::string textColumn(const std::string& name, CFField::StorageType storage)
{
    const std::string column = quotedIdentifier(name);
    std::string text = "CAST(" + column + " AS VARCHAR)";
    if (storage != CFField::Real)
        return text;
    return "CASE WHEN abs(" + column + ") < 1e15 AND " + column + " = floor(" + column +
           ") THEN CAST(CAST(" + column + " AS BIGINT) AS VARCHAR) ELSE " + text + " END";
}

/// The values of a time in one text.
std::string timeColumn(const Fields& fields)
{
    if (fields.empty())
        return "''";
    std::string columns;
    for (const CFField& field : fields)
        columns += ", " + textColumn(field.GetName(), field.GetStorage());
    return "concat_ws(', '" + columns + ")";
}

/// Two lists of texts have the same key only if they are the same.
void addToKey(std::string& key, std::string_view text)
{
    key += std::to_string(text.size());
    key += ':';
    key += text;
}

} // namespace

/// The columns of a chunk in the order of the statement.
struct NamedRecords::Columns
{
    explicit Columns(duck::Chunk& chunk, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            data.push_back(duckdb_vector_get_data(chunk.column(i)));
            validity.push_back(duckdb_vector_get_validity(chunk.column(i)));
        }
    }

    bool isMissing(std::size_t column, std::size_t row) const
    {
        return validity[column] && !duckdb_validity_row_is_valid(validity[column], row);
    }
    std::string_view text(std::size_t column, std::size_t row) const
    {
        if (isMissing(column, row))
            return {};
        auto& value = static_cast<duckdb_string_t*>(data[column])[row];
        return {duckdb_string_t_data(&value), duckdb_string_t_length(value)};
    }
    double real(std::size_t column, std::size_t row) const
    {
        return isMissing(column, row) ? std::numeric_limits<double>::quiet_NaN()
                                      : static_cast<const double*>(data[column])[row];
    }

    std::vector<void*> data;
    std::vector<std::uint64_t*> validity;
};

NamedRecords::NamedRecords(const Fields& fields, const TcmModel& model, const NamedSeries& known,
                           std::string component, const MessageSink& message)
    : _known(known), _component(std::move(component)), _texts(known.dimensions.size())
{
    checkFields(fields);
    findMetrics(fields, model, message);
    for (const ModelSeries& series : model.series)
        addSeries(series);
}

void NamedRecords::refuse(const std::string& problem, FaultParts parts) const
{
    parts.step = _component;
    parts.what = problem;
    throw JobError(errors::kRecordsDiffer, std::move(parts));
}

void NamedRecords::checkFields(const Fields& fields)
{
    const auto needed = [&](const std::string& name, const char* what) -> const CFField& {
        const CFField* field = findField(fields, name);
        if (!field)
            refuse("the input has no field \"" + name + "\", which is " + what + " of the model",
                   {.field = name});
        return *field;
    };
    for (const CFField& time : _known.axis.fields)
        _timeFields.push_back(needed(time.GetName(), "a time field"));
    for (const CFField& dimension : _known.dimensions)
        needed(dimension.GetName(), "a dimension");
    _hasFlag = findField(fields, kFutureFlagField) != nullptr;
}

void NamedRecords::findMetrics(const Fields& fields, const TcmModel& model,
                               const MessageSink& message)
{
    std::unordered_map<std::string, const CFField*> byName;
    for (const CFField& field : fields)
        byName.emplace(field.GetName(), &field);
    std::vector<std::string> missing;
    for (const ModelSeries& series : model.series) {
        if (series.name.size() != _known.dimensions.size() + 1)
            continue;
        const std::string& metric = series.name.back();
        const auto found = byName.find(metric);
        if (!_metricPlaces.emplace(metric, found == byName.end() ? kNone : _metrics.size()).second)
            continue;
        if (found == byName.end())
            missing.push_back(metric);
        else
            addMetric(*found->second);
    }
    if (_metrics.empty())
        refuse("the input has none of the model's metrics, which are " + base::quotedList(missing));
    if (!missing.empty())
        message(errors::kSeriesWithoutRecords,
                {.step = _component,
                 .what = "the input lacks metrics of the model, whose series have no values: " +
                         base::quotedList(missing)});
}

void NamedRecords::addMetric(const CFField& field)
{
    if (field.GetStorage() != CFField::Real && field.GetStorage() != CFField::Integer)
        refuse("the field \"" + field.GetName() +
                   "\" of the input, which is a metric of the model, is not a number",
               {.field = field.GetName()});
    _metrics.push_back(field.GetName());
}

std::string NamedRecords::keyOf(const std::vector<std::string_view>& values) const
{
    std::string key;
    for (std::size_t i = 0; i < values.size(); ++i)
        addToKey(key, dimensionKey(values[i], _known.dimensions[i].GetStorage()));
    return key;
}

void NamedRecords::addSeries(const ModelSeries& series)
{
    if (series.name.size() != _known.dimensions.size() + 1)
        return;
    const std::size_t metric = _metricPlaces.at(series.name.back());
    if (metric == kNone)
        return;
    const std::vector<std::string_view> values(series.name.begin(), series.name.end() - 1);
    const auto [place, isNew] = _byKey.emplace(keyOf(values), _combinations.size());
    if (isNew)
        _combinations.push_back({std::vector(_metrics.size(), kNone)});
    _combinations[place->second].series[metric] = _ids.size();
    _ids.push_back(series.id);
    _values.emplace_back();
}

std::string NamedRecords::statement(const std::string& select) const
{
    std::string columns = timeColumn(_timeFields);
    for (std::size_t i = 0; i < _known.dimensions.size(); ++i)
        columns += ", " + textColumn(_known.dimensions[i].GetName(), CFField::String);
    for (const std::string& metric : _metrics)
        columns += ", CAST(" + quotedIdentifier(metric) + " AS DOUBLE)";
    if (_hasFlag)
        columns += ", CAST(" + quotedIdentifier(kFutureFlagField) + " AS DOUBLE)";
    return "SELECT " + columns + " FROM (" + select + ") AS hv_named";
}

void NamedRecords::take(duck::Chunk& chunk)
{
    const std::size_t values = 1 + _known.dimensions.size() + _metrics.size();
    const Columns columns(chunk, values + (_hasFlag ? 1 : 0));
    for (std::size_t row = 0; row < chunk.rows(); ++row) {
        ++_records;
        if (!_hasFlag || columns.isMissing(values, row) || columns.real(values, row) == 0)
            takeRecord(columns, row);
    }
}

NamedRecords::Combination* NamedRecords::combinationOf(const Columns& columns, std::size_t row)
{
    _rawKey.clear();
    for (std::size_t i = 0; i < _texts.size(); ++i) {
        _texts[i] = columns.text(1 + i, row);
        addToKey(_rawKey, _texts[i]);
    }
    auto met = _met.find(_rawKey);
    if (met == _met.end()) {
        const auto known = _byKey.find(keyOf(_texts));
        met = _met.emplace(_rawKey, known == _byKey.end() ? kNone : known->second).first;
    }
    return met->second == kNone ? nullptr : &_combinations[met->second];
}

void NamedRecords::takeRecord(const Columns& columns, std::size_t row)
{
    Combination* const combination = combinationOf(columns, row);
    if (!combination)
        return;
    takePoint(*combination, columns.text(0, row));
    for (std::size_t metric = 0; metric < _metrics.size(); ++metric)
        if (const std::size_t series = combination->series[metric]; series != kNone)
            _values[series].push_back(columns.real(1 + _texts.size() + metric, row));
}

void NamedRecords::takePoint(Combination& combination, std::string_view time)
{
    const std::size_t point = combination.points++;
    if (_points.empty())
        checkFirst(time);
    if (point == _points.size())
        _points.emplace_back(time);
    else if (_points[point] != time)
        refuse("record " + std::to_string(_records) + " of the input is of the time \"" +
                   std::string(time) + "\", but other series have \"" + _points[point] +
                   "\" there: each series needs a record for each point of time",
               {.record = _records});
}

/// Prepared data always begin with the first point of the training.
void NamedRecords::checkFirst(std::string_view time) const
{
    const PointLabels labels(_known.axis, TimeOfDay::Seconds);
    const std::string first = labels.text(0);
    const std::string text(time);
    const bool isFirst =
        labels.areMoments() ? momentOfText(text) == momentOfText(first) : text == first;
    if (!isFirst)
        refuse("the input begins at the time \"" + text + "\", not at \"" + first +
               "\" as the training data: its records are not those that rtsdp gives");
}

void NamedRecords::checkLengths() const
{
    for (const Combination& combination : _combinations)
        if (combination.points != 0 && combination.points != _points.size())
            refuse("a series ends at the time \"" + _points[combination.points - 1] +
                   "\", but others at \"" + _points.back() +
                   "\": each series needs a record for each point of time");
}

SeriesTable NamedRecords::finish()
{
    if (_points.empty())
        refuse("the input has no record of a series of the model");
    checkLengths();
    SeriesTable table;
    for (std::size_t series = 0; series < _ids.size(); ++series)
        if (!_values[series].empty())
            table.ids.push_back(_ids[series]);
    const auto points = static_cast<Eigen::Index>(_points.size());
    table.values.resize(points, static_cast<Eigen::Index>(table.ids.size()));
    Eigen::Index column = 0;
    for (std::vector<double>& values : _values)
        if (!values.empty()) {
            table.values.col(column++) = Eigen::Map<const Eigen::VectorXd>(values.data(), points);
            values = {};
        }
    return table;
}

} // namespace EmbeddedHV
