#include "data/CaseColumn.h"

#include <cstdint>
#include <utility>

#include "HostConversions.h"
#include "VexaCases.h"
#include "base/AsciiText.h"
#include "base/CivilTime.h"
#include "base/TimestampScale.h"
#include "base/Utf8.h"
#include "data/CaseText.h"

namespace {

/// The beginning of a text in UTF-8, to identify it.
std::string beginningOf(std::string_view text)
{
    constexpr std::size_t kEnough = 60;
    if (text.size() <= kEnough)
        return std::string(text);
    return std::string(text.substr(0, base::wholeCharacters(text, kEnough))) + "...";
}

/// Whether a double represents the integer exactly.
bool isExact(std::int64_t value)
{
    constexpr std::int64_t kTwoTo53 = 9007199254740992;
    constexpr double kTwoTo63 = 9223372036854775808.0;
    if (value >= -kTwoTo53 && value <= kTwoTo53)
        return true;
    const auto number = static_cast<double>(value);
    return number < kTwoTo63 && static_cast<std::int64_t>(number) == value;
}

std::string integerText(std::int64_t value)
{
    return std::to_string(value);
}

/// With microseconds, for example 2024-05-06 07:08:09.123456.
std::string timestampText(std::int64_t microseconds)
{
    return base::isoDate(base::floorDivided(microseconds, base::kMicrosecondsPerDay)) + " " +
           base::isoClock(base::floorRest(microseconds, base::kMicrosecondsPerDay),
                          base::Decimals::Six);
}

} // namespace

CaseColumn::CaseColumn(CFField::StorageType storage, int width, std::string name,
                       std::shared_ptr<CodePage> page)
    : _units(unitsOfWidth(width)), _storage(storage), _width(width), _name(std::move(name)),
      _page(page && !page->isUtf8() ? std::move(page) : nullptr)
{
}

template <class T, class Convert>
void CaseColumn::loadNumbers(duckdb_vector vector, std::size_t rows, Convert convert)
{
    makeRoom(rows);
    const auto* data = static_cast<const T*>(duckdb_vector_get_data(vector));
    for (std::size_t row = 0; row < rows; ++row)
        _values[row].number = convert(data[row]);
    // A missing value has an undefined number: overwrite it.
    if (std::uint64_t* validity = duckdb_vector_get_validity(vector))
        for (std::size_t row = 0; row < rows; ++row)
            if (!duckdb_validity_row_is_valid(validity, row))
                _values[row].number = kSystemMissing;
}

/// Reports integers that a double cannot represent, for example long identifiers.
template <class IsKept, class Text>
void CaseColumn::tellRounded(duckdb_vector vector, std::size_t rows, IsKept isKept, Text text,
                             ErrorMonitor& monitor) const
{
    const auto* data = static_cast<const std::int64_t*>(duckdb_vector_get_data(vector));
    std::uint64_t* validity = duckdb_vector_get_validity(vector);
    for (std::size_t row = 0; row < rows; ++row)
        if ((!validity || duckdb_validity_row_is_valid(validity, row)) && !isKept(data[row]))
            monitor.Report("variable \"" + _name + "\": " + text(data[row]) +
                           " has more digits than a number of the host and was rounded");
}

/// Most numeric columns have the same form in the database and in a case, and are not copied.
void CaseColumn::loadReals(duckdb_vector vector, std::size_t rows)
{
    if (duckdb_vector_get_validity(vector))
        loadNumbers<double>(vector, rows, [](double value) { return value; });
    else
        _first = static_cast<const OBS*>(duckdb_vector_get_data(vector));
}

void CaseColumn::makeRoom(std::size_t rows)
{
    if (_values.size() < rows * _units)
        _values.resize(rows * _units);
    _first = _values.data();
}

void CaseColumn::load(duckdb_vector vector, std::size_t rows, ErrorMonitor* monitor)
{
    const double base = GetBaseDateNumber();
    switch (_storage) {
    case CFField::Integer:
        loadNumbers<std::int64_t>(vector, rows,
                                  [](std::int64_t value) { return static_cast<double>(value); });
        if (monitor)
            tellRounded(vector, rows, isExact, integerText, *monitor);
        return;
    case CFField::Date:
        return loadNumbers<std::int32_t>(
            vector, rows, [base](std::int32_t days) { return base + days * base::kSecondsPerDay; });
    case CFField::Time:
        return loadNumbers<std::int64_t>(vector, rows, [](std::int64_t microseconds) {
            return static_cast<double>(microseconds) / base::kMicrosecondsPerSecond;
        });
    case CFField::Timestamp:
        loadNumbers<std::int64_t>(vector, rows, base::hostSeconds);
        if (monitor)
            tellRounded(vector, rows, base::survivesHost, timestampText, *monitor);
        return;
    case CFField::String:
        return loadTexts(vector, rows, monitor);
    default:
        return loadReals(vector, rows);
    }
}

/// A missing text becomes blank, because a case cannot represent it otherwise.
void CaseColumn::loadTexts(duckdb_vector vector, std::size_t rows, ErrorMonitor* monitor)
{
    makeRoom(rows);
    auto* data = static_cast<duckdb_string_t*>(duckdb_vector_get_data(vector));
    std::uint64_t* validity = duckdb_vector_get_validity(vector);
    for (std::size_t row = 0; row < rows; ++row) {
        std::string_view text;
        if (!validity || duckdb_validity_row_is_valid(validity, row))
            text = {duckdb_string_t_data(&data[row]), duckdb_string_t_length(data[row])};
        put(row, text, monitor);
    }
}

/// Converts a text to the host's encoding and its variable's width. Losses are reported, and
/// reading continues.
void CaseColumn::put(std::size_t row, std::string_view text, ErrorMonitor* monitor)
{
    const std::string_view original = text;
    if (_page && !base::isAscii(text)) {
        // Replace characters that the encoding lacks: a single one must not make a file unreadable.
        if (!_page->fromUtf8(text, _converted) && monitor)
            monitor->Report("variable \"" + _name + "\": the encoding " + _page->name() +
                            " cannot hold \"" + beginningOf(original) + "\"");
        text = _converted;
    }
    const auto most = static_cast<std::size_t>(_width);
    if (trimmedLength(text) > most) {
        text = text.substr(0, wholeCharacters(text, most, _page.get()));
        if (monitor)
            monitor->Report("variable \"" + _name + "\": \"" + beginningOf(original) +
                            "\" is longer than the variable is wide and was cut");
    }
    putText(&_values[row * _units], _units, text);
}
