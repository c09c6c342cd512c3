#include "components/temporal/base/SeriesTable.h"

#include <algorithm>
#include <limits>

#include "ErrorIds.h"
#include "JobError.h"

namespace EmbeddedHV {
namespace {

bool isMissing(const std::uint64_t* validity, std::size_t row)
{
    return validity && !duckdb_validity_row_is_valid(const_cast<std::uint64_t*>(validity), row);
}

} // namespace

Fields fieldsOfSeries(const std::vector<std::string>& ids)
{
    Fields fields;
    fields.emplace_back(kTimeIndexField, CFField::Ordinal, CFField::Integer);
    for (const std::string& id : ids)
        fields.emplace_back(id, CFField::Continuous, CFField::Real);
    return fields;
}

SeriesReader::SeriesReader(const Fields& fields, std::string component)
    : _component(std::move(component))
{
    const auto index = std::find_if(fields.begin(), fields.end(), [](const CFField& field) {
        return field.GetName() == kTimeIndexField && field.GetStorage() == CFField::Integer;
    });
    if (index == fields.end())
        throw JobError(errors::kUnknownField,
                       {.step = _component,
                        .field = kTimeIndexField,
                        .what = std::string("the input has no integer field \"") + kTimeIndexField +
                                "\": its records are not those that tsdp prepares"});
    _indexColumn = static_cast<std::size_t>(index - fields.begin());
    for (std::size_t column = 0; column < fields.size(); ++column) {
        if (column == _indexColumn)
            continue;
        if (fields[column].GetStorage() != CFField::Real)
            throw JobError(errors::kSettingType,
                           {.step = _component,
                            .field = fields[column].GetName(),
                            .what = "the field \"" + fields[column].GetName() +
                                    "\" of the input is not a real number: its records are not "
                                    "those that tsdp prepares"});
        _columns.push_back(column);
        _table.ids.push_back(fields[column].GetName());
    }
    _values.resize(_columns.size());
}

void SeriesReader::take(duck::Chunk& chunk)
{
    takeIndexes(chunk);
    for (std::size_t series = 0; series < _columns.size(); ++series)
        takeSeries(chunk, series);
}

void SeriesReader::takeIndexes(duck::Chunk& chunk)
{
    const duckdb_vector vector = chunk.column(_indexColumn);
    const auto* const indexes = static_cast<const std::int64_t*>(duckdb_vector_get_data(vector));
    const std::uint64_t* const validity = duckdb_vector_get_validity(vector);
    for (std::size_t row = 0; row < chunk.rows(); ++row) {
        if (!isMissing(validity, row) && _points == 0)
            _table.firstIndex = indexes[row];
        if (isMissing(validity, row) || indexes[row] - _table.firstIndex != _points)
            throw JobError(errors::kBadRecord,
                           {.step = _component,
                            .record = static_cast<std::uint64_t>(_points) + 1,
                            .what = "record " + std::to_string(_points + 1) +
                                    " of the input is not that of the next point of time"});
        ++_points;
    }
}

void SeriesReader::takeSeries(duck::Chunk& chunk, std::size_t series)
{
    const duckdb_vector vector = chunk.column(_columns[series]);
    const auto* const values = static_cast<const double*>(duckdb_vector_get_data(vector));
    const std::uint64_t* const validity = duckdb_vector_get_validity(vector);
    std::vector<double>& taken = _values[series];
    const std::size_t before = taken.size();
    taken.insert(taken.end(), values, values + chunk.rows());
    for (std::size_t row = 0; validity && row < chunk.rows(); ++row)
        if (isMissing(validity, row))
            taken[before + row] = std::numeric_limits<double>::quiet_NaN();
}

SeriesTable SeriesReader::finish()
{
    _table.values.resize(_points, static_cast<Eigen::Index>(_columns.size()));
    for (std::size_t series = 0; series < _columns.size(); ++series) {
        _table.values.col(static_cast<Eigen::Index>(series)) =
            Eigen::Map<const Eigen::VectorXd>(_values[series].data(), _points);
        _values[series] = {};
    }
    _points = 0;
    return std::move(_table);
}

} // namespace EmbeddedHV
