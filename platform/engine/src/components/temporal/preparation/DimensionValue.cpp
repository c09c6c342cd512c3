#include "components/temporal/preparation/DimensionValue.h"

#include <charconv>
#include <cmath>

#include "components/temporal/preparation/CivilTime.h"

namespace EmbeddedHV {
namespace {

template <class Value>
const Value& valueIn(duckdb_vector vector, std::size_t row)
{
    return static_cast<const Value*>(duckdb_vector_get_data(vector))[row];
}

bool hasMoments(CFField::StorageType storage)
{
    return storage == CFField::Date || storage == CFField::Time || storage == CFField::Timestamp;
}

Moment momentOfDimension(const CFDatum& value, CFField::StorageType storage)
{
    return storage == CFField::Date ? value.GetInteger() * kMomentsOfDay : value.GetInteger();
}

std::optional<CFDatum> dimensionMomentOf(const std::string& text, CFField::StorageType storage)
{
    const auto moment = momentOfText(text);
    // A time of day is no value of a field of dates.
    if (!moment || momentOfText(momentText(*moment, storage)) != moment)
        return std::nullopt;
    return CFDatum(storage == CFField::Date ? dayOf(*moment) : *moment);
}

template <class Number>
std::optional<CFDatum> numberOfText(const std::string& text)
{
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || last != end)
        return std::nullopt;
    return CFDatum(number);
}

} // namespace

CFDatum dimensionValueAt(const duck::Chunk& chunk, std::size_t column, std::size_t row,
                         CFField::StorageType storage)
{
    const duckdb_vector vector = chunk.column(column);
    std::uint64_t* const validity = duckdb_vector_get_validity(vector);
    if (validity && !duckdb_validity_row_is_valid(validity, row))
        return {};
    switch (storage) {
    case CFField::Real:
        return CFDatum(valueIn<double>(vector, row) + 0.0); // no -0
    case CFField::Date:
        return CFDatum(std::int64_t{valueIn<std::int32_t>(vector, row)});
    case CFField::Integer:
    case CFField::Time:
    case CFField::Timestamp:
        return CFDatum(valueIn<std::int64_t>(vector, row));
    default: {
        duckdb_string_t text = valueIn<duckdb_string_t>(vector, row);
        return CFDatum(std::string(duckdb_string_t_data(&text), duckdb_string_t_length(text)));
    }
    }
}

void addDimensionValue(NewTable& table, const CFDatum& value, CFField::StorageType storage)
{
    switch (storage) {
    case CFField::Integer:
        return table.addInteger(value.GetInteger());
    case CFField::Real:
        return table.addReal(value.GetReal());
    case CFField::Date:
        return table.addDate(static_cast<std::int32_t>(value.GetInteger()));
    case CFField::Time:
        return table.addTime(value.GetInteger());
    case CFField::Timestamp:
        return table.addTimestamp(value.GetInteger());
    default:
        return table.addText(value.GetString());
    }
}

std::string dimensionText(const CFDatum& value, CFField::StorageType storage)
{
    return hasMoments(storage) ? momentText(momentOfDimension(value, storage), storage)
                               : value.ToString(-1);
}

Json dimensionJson(const CFDatum& value, CFField::StorageType storage)
{
    if (value.IsReal())
        return value.GetReal();
    if (value.IsInteger() && !hasMoments(storage))
        return value.GetInteger();
    return dimensionText(value, storage);
}

std::optional<CFDatum> dimensionValueOf(const Json& json, CFField::StorageType storage)
{
    // The same field is of texts in one source and of numbers in another: what is equal as text is
    // the same value.
    if (!json.is_string() && !json.is_number())
        return std::nullopt;
    const double real = json.is_number() ? json.get<double>() : 0;
    const std::string text = json.is_string()         ? json.get<std::string>()
                             : json.is_number_float() ? CFDatum(real).ToString(-1)
                                                      : json.dump();
    if (hasMoments(storage))
        return dimensionMomentOf(text, storage);
    if (storage == CFField::Real)
        return json.is_number() ? CFDatum(real + 0.0) : numberOfText<double>(text);
    if (storage == CFField::Integer)
        return numberOfText<std::int64_t>(text);
    return CFDatum(text);
}

} // namespace EmbeddedHV
