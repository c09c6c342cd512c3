#include "data/CaseColumn.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "HostConversions.h"
#include "VexaCases.h"
#include "data/CaseText.h"

namespace {

constexpr double kMicroseconds = 1e6;
constexpr double kSecondsPerDay = 86400;

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/// The longest beginning of at most `most` bytes that cuts no character.
std::size_t wholeCharacters(std::string_view text, std::size_t most, const CodePage* page)
{
    if (!page) { // UTF-8
        std::size_t length = most;
        while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
            --length;
        return length;
    }
    std::size_t length = 0;
    page->eachCharacter(text, [&](std::size_t offset, std::size_t count) {
        const bool fits = offset + count <= most;
        if (fits)
            length = offset + count;
        return fits;
    });
    return length;
}

} // namespace

CaseColumn::CaseColumn(CFField::StorageType storage, int width, std::string name,
                       std::shared_ptr<CodePage> page)
    : _storage(storage), _width(width), _units(unitsOfWidth(width)), _name(std::move(name)),
      _page(page && !page->isUtf8() ? std::move(page) : nullptr)
{
}

template <class T, class Convert>
void CaseColumn::loadNumbers(duckdb_vector vector, std::size_t rows, Convert convert)
{
    const auto* data = static_cast<const T*>(duckdb_vector_get_data(vector));
    for (std::size_t row = 0; row < rows; ++row)
        _values[row].number = convert(data[row]);
    // A place without a value holds whatever was there before: it is overwritten, not skipped.
    if (std::uint64_t* validity = duckdb_vector_get_validity(vector))
        for (std::size_t row = 0; row < rows; ++row)
            if (!duckdb_validity_row_is_valid(validity, row))
                _values[row].number = kSystemMissing;
}

void CaseColumn::load(duckdb_vector vector, std::size_t rows, ErrorMonitor* monitor)
{
    if (_values.size() < rows * _units)
        _values.resize(rows * _units);
    const double base = GetBaseDateNumber();
    switch (_storage) {
    case CFField::Integer:
        return loadNumbers<std::int64_t>(
            vector, rows, [](std::int64_t value) { return static_cast<double>(value); });
    case CFField::Date:
        return loadNumbers<std::int32_t>(
            vector, rows, [base](std::int32_t days) { return base + days * kSecondsPerDay; });
    case CFField::Time:
        return loadNumbers<std::int64_t>(vector, rows, [](std::int64_t microseconds) {
            return static_cast<double>(microseconds) / kMicroseconds;
        });
    case CFField::Timestamp:
        return loadNumbers<std::int64_t>(vector, rows, [base](std::int64_t microseconds) {
            return base + static_cast<double>(microseconds) / kMicroseconds;
        });
    case CFField::String:
        return loadTexts(vector, rows, monitor);
    default:
        return loadNumbers<double>(vector, rows, [](double value) { return value; });
    }
}

void CaseColumn::loadTexts(duckdb_vector vector, std::size_t rows, ErrorMonitor* monitor)
{
    auto* data = static_cast<duckdb_string_t*>(duckdb_vector_get_data(vector));
    std::uint64_t* validity = duckdb_vector_get_validity(vector);
    for (std::size_t row = 0; row < rows; ++row) {
        std::string_view text;
        if (!validity || duckdb_validity_row_is_valid(validity, row))
            text = {duckdb_string_t_data(&data[row]), duckdb_string_t_length(data[row])};
        put(row, text, monitor);
    }
}

void CaseColumn::put(std::size_t row, std::string_view text, ErrorMonitor* monitor)
{
    const std::string_view original = text;
    if (_page && !isAscii(text)) {
        if (!_page->fromUtf8(text, _converted) && monitor)
            monitor->Report("variable \"" + _name + "\": the encoding " + _page->name() +
                            " cannot hold \"" + std::string(original) + "\"");
        text = _converted;
    }
    const auto most = static_cast<std::size_t>(_width);
    if (trimmedLength(text) > most) {
        text = text.substr(0, wholeCharacters(text, most, _page.get()));
        if (monitor)
            monitor->Report("variable \"" + _name + "\": \"" + std::string(original) +
                            "\" is longer than the variable is wide and was cut");
    }
    putText(&_values[row * _units], _units, text);
}
