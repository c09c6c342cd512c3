#include "datafile/CsvProfile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numeric>
#include <stdexcept>
#include <system_error>

#include "base/Utf8.h"
#include "datafile/Fault.h"
#include "datafile/FaultIds.h"

namespace datafile {
namespace {

/// Number of records between two calls of `goOn`.
constexpr std::uint64_t kRecordsBetweenLooks = 1024;

/// Whether an Integer field can hold the number unchanged.
bool isWhole(const std::string& text)
{
    double value = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
    return parsed.ec == std::errc() && std::trunc(value) == value;
}

Fault unreadable(const std::string& path, const std::system_error& error)
{
    return {faults::kFileUnreadable,
            {.step = "read",
             .file = path,
             .what = "the file cannot be read: " + error.code().message()}};
}

/// Opens the file; a system error becomes a Fault.
CsvScanner scannerFor(const std::string& path)
{
    try {
        return CsvScanner(path);
    } catch (const std::system_error& error) {
        throw unreadable(path, error);
    }
}

} // namespace

CsvProfile::CsvProfile(std::string path, bool hasHeader, std::vector<CFField::StorageType> expected)
    : _path(std::move(path)), _scanner(scannerFor(_path)), _hasHeader(hasHeader),
      _expected(std::move(expected))
{
    readNames();
}

void CsvProfile::readNames()
{
    if (!_scanner.next(_fields))
        throw Fault(faults::kFileEmpty,
                    {.step = "read", .file = _path, .what = "the file holds no line with text"});
    if (_hasHeader && _scanner.flaw())
        throw faultOf(*_scanner.flaw(), _path);
    for (const CsvField& field : _fields) {
        if (!base::isUtf8(field.text) || field.text.find('\0') != std::string_view::npos)
            throw Fault(faults::kNotOfItsKind, {.step = "read",
                                                .file = _path,
                                                .inFile = {_scanner.line()},
                                                .kind = kinds::kNotUtf8,
                                                .what = "this is not a CSV file in UTF-8"});
        _names.push_back(_hasHeader ? textOf(field) : "");
    }
    _names = uniqueNames(std::move(_names));
    _kinds.assign(_names.size(), CsvKind::Missing);
    watchAll();
    if (_names.size() == 1)
        _scanner.takeBlankLines();
    if (!_hasHeader)
        takeBlankHead();
}

/// Counts the first record of a file without names. In a file with one column, the blank lines
/// before it are records too.
void CsvProfile::takeBlankHead()
{
    if (_names.size() == 1)
        _records = _scanner.line() - 1;
    take();
}

CFField::StorageType CsvProfile::storageOf(std::size_t column) const
{
    return storageOfKind(_kinds[column]);
}

bool CsvProfile::read(std::uint64_t records, const std::function<bool()>& goOn)
try {
    while (_records < records && !_complete) {
        if (goOn && _records % kRecordsBetweenLooks == 0 && !goOn())
            return false;
        if (next())
            continue;
        _complete = true;
        if (_scanner.flaw()) // in the end of the last line
            takeFlaw(*_scanner.flaw());
    }
    return true;
} catch (const std::length_error& error) {
    throw Fault(faults::kBadRecord, {.step = "read", .file = _path, .what = error.what()});
} catch (const std::system_error& error) {
    throw unreadable(_path, error);
}

bool CsvProfile::readAnew(std::uint64_t records, const std::function<bool()>& goOn)
{
    _hasLongRecord = hasLongRecord();
    _hasQuotes = hasQuotes();
    _misleadsThreads = misleadsThreads();
    _scanner = scannerFor(_path);
    _kinds.assign(_names.size(), CsvKind::Missing);
    _records = 0;
    _complete = false;
    _trusting = false;
    watchAll();
    // The names are known. Without a header the first line is a record.
    if (_hasHeader)
        _scanner.next(_fields);
    if (_names.size() == 1)
        _scanner.takeBlankLines();
    return read(records, goOn);
}

void CsvProfile::watchAll()
{
    _watched.resize(_names.size());
    std::iota(_watched.begin(), _watched.end(), std::size_t{0});
    _hasUnreadColumn = false;
}

void CsvProfile::trust(const std::optional<std::vector<bool>>& columnsRead)
{
    _trusting = true;
    _watched.clear();
    for (std::size_t column = 0; column < _kinds.size(); ++column) {
        if (_kinds[column] == CsvKind::Text)
            continue;
        if (!columnsRead || (*columnsRead)[column])
            _watched.push_back(column);
        else
            _hasUnreadColumn = true;
    }
}

/// Reads a record. Returns false at the end of the file.
bool CsvProfile::next()
{
    const bool looksAtFew = _trusting && _longest.empty() && _expected.empty();
    if (looksAtFew && _scanner.nextWellFormed(_names.size())) {
        takeWellFormed();
        return true;
    }
    if (!_scanner.next(_fields))
        return false;
    take();
    return true;
}

void CsvProfile::takeWellFormed()
{
    ++_records;
    for (const std::size_t column : _watched)
        takeKind(column, _scanner.field(column));
}

void CsvProfile::take()
{
    ++_records;
    if (_scanner.flaw())
        takeFlaw(*_scanner.flaw());
    if (_fields.size() != _names.size())
        return takeFlaw({.line = _scanner.line(),
                         .text = "the record has " + std::to_string(_fields.size()) +
                                 (_fields.size() == 1 ? " field" : " fields") + ", not " +
                                 std::to_string(_names.size()),
                         .kind = kinds::kFieldCount});
    if (!_longest.empty())
        takeLengths();
    // The types are fixed: search only values that would be changed silently.
    if (!_expected.empty())
        return takeExpected();
    for (const std::size_t column : _watched)
        takeKind(column, _fields[column]);
}

void CsvProfile::takeKind(std::size_t column, const CsvField& field)
{
    CsvKind& kind = _kinds[column];
    if (kind != CsvKind::Text && !(_trusting && isSafeAs(kind, field)))
        kind = widened(kind, kindOf(field));
}

void CsvProfile::takeFlaw(const CsvFlaw& flaw)
{
    const auto keep = [&](std::optional<CsvFlaw>& first) {
        if (first)
            return;
        first = flaw;
        first->record = _records;
    };
    keep(_flaw);
    if (!flaw.canBeSkipped())
        keep(_fatalFlaw);
}

void CsvProfile::measure()
{
    _longest.assign(_names.size(), 0);
    _gaps.assign(_names.size(), false);
    if (_records > 0) // the first record, in a file without names
        takeLengths();
    if (_records > 1) // blank lines precede it
        _gaps.front() = true;
}

void CsvProfile::takeLengths()
{
    for (std::size_t column = 0; column < _fields.size(); ++column) {
        const CsvField& field = _fields[column];
        if (!_flaw && !base::isUtf8(field.text))
            takeFlaw({.line = _scanner.line(),
                      .text = "the text is not UTF-8",
                      .kind = kinds::kNotUtf8});
        if (field.text.empty())
            _gaps[column] = true;
        else if (field.text.size() > _longest[column])
            _longest[column] = std::max(_longest[column], textOf(field).size());
    }
}

void CsvProfile::takeExpected()
{
    for (std::size_t column = 0; column < _fields.size(); ++column)
        if (_expected[column] == CFField::Integer || _expected[column] == CFField::Date)
            checkExpected(column, kindOf(_fields[column]));
}

void CsvProfile::checkExpected(std::size_t column, CsvKind kind)
{
    const std::string text(_fields[column].text);
    // The database rounds a fraction and drops a time of day. It refuses all other invalid values
    // itself.
    const bool changed = _expected[column] == CFField::Integer
                             ? kind == CsvKind::Real && !isWhole(text)
                             : kind == CsvKind::Timestamp;
    if (changed && !_misfit)
        _misfit = {_scanner.line(), column, text};
}

Fault faultOf(const CsvFlaw& flaw, const std::string& path)
{
    return {flaw.isOfFile ? faults::kFileUnreadable : faults::kBadRecord,
            {.step = "read",
             .file = path,
             .inFile = {flaw.line, flaw.column},
             .kind = flaw.kind,
             .what = flaw.text}};
}

std::optional<CsvFlaw> firstCsvFlaw(const std::string& path, bool hasHeader, std::uint64_t records,
                                    const std::function<bool()>& goOn)
{
    CsvProfile profile(path, hasHeader);
    profile.measure();
    profile.read(records, [&] { return !profile.flaw() && goOn(); });
    return profile.flaw();
}

} // namespace datafile
