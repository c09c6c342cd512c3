#include "runtime/RowColumn.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "CFDatum.h"
#include "DataFileNames.h"
#include "base/CivilTime.h"
#include "base/NumberText.h"
#include "base/TimestampScale.h"
#include "base/Utf8.h"

namespace EmbeddedHV {
namespace {

constexpr auto kMicroseconds = static_cast<double>(base::kMicrosecondsPerSecond);
/// The limits of the database's types, with room for rounding.
constexpr double kMostInteger = 9223372036854774784.0;
constexpr double kMostDays = 106751990.0;
constexpr double kMostTimestampSeconds = 9.2e12;

std::string numberText(double value)
{
    if (std::isnan(value))
        return "not a number (NaN)";
    if (std::isinf(value))
        return value > 0 ? "infinite" : "minus infinite";
    return base::shortestNumber(value);
}

} // namespace

RowColumn::RowColumn(const CFField& field, std::size_t fieldIndex, duckdb_vector vector)
    : _storage(field.GetStorage()), _fieldIndex(fieldIndex), _vector(vector),
      _data(duckdb_vector_get_data(vector))
{
}

void RowColumn::setMissing(std::size_t row)
{
    if (!_hasValidity) {
        duckdb_vector_ensure_validity_writable(_vector);
        _hasValidity = true;
    }
    duckdb_validity_set_row_invalid(duckdb_vector_get_validity(_vector), row);
}

bool RowColumn::setOther(std::size_t row, const void* value, std::size_t length,
                         std::string& problem)
{
    if (_storage == CFField::String)
        return setText(row, static_cast<const char*>(value), length, problem);
    double number = 0;
    std::memcpy(&number, value, sizeof number);
    return setNumber(row, number, problem);
}

bool RowColumn::setNumber(std::size_t row, double value, std::string& problem)
{
    switch (_storage) {
    case CFField::Date:
        return setDate(row, value, problem);
    case CFField::Time:
        return setMicroseconds(row, value, 0, base::kSecondsPerDay, problem);
    case CFField::Timestamp:
        return setMicroseconds(row, value, -kMostTimestampSeconds, kMostTimestampSeconds, problem);
    default:
        break;
    }
    if (!(std::fabs(value) <= kMostInteger)) {
        problem = "the value is " + numberText(value) + ", which no integer holds";
        return false;
    }
    static_cast<std::int64_t*>(_data)[row] = std::llround(value);
    return true;
}

bool RowColumn::setDate(std::size_t row, double days, std::string& problem)
{
    if (!(std::fabs(days) <= kMostDays)) {
        problem = "the number of days is " + numberText(days) + ", which no date holds";
        return false;
    }
    const double day = std::floor(days);
    _timesDropped += day != days ? 1U : 0U;
    static_cast<std::int32_t*>(_data)[row] = static_cast<std::int32_t>(day);
    return true;
}

bool RowColumn::setMicroseconds(std::size_t row, double seconds, double least, double most,
                                std::string& problem)
{
    if (!(seconds >= least && seconds <= most)) {
        problem = "the number of seconds is " + numberText(seconds) + ", which no " +
                  (_storage == CFField::Time ? "time of day" : "timestamp") + " holds";
        return false;
    }
    // Only timestamps are so far from their origin that digits would be lost.
    static_cast<std::int64_t*>(_data)[row] = _storage == CFField::Timestamp
                                                 ? base::timestampOfRow(seconds)
                                                 : std::llround(seconds * kMicroseconds);
    return true;
}

bool RowColumn::setText(std::size_t row, const char* text, std::size_t length, std::string& problem)
{
    if (!base::isUtf8({text, length})) {
        problem = "the text is not UTF-8";
        return false;
    }
    duckdb_vector_assign_string_element_len(_vector, row, text, length);
    return true;
}

} // namespace EmbeddedHV
