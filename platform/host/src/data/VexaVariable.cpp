#include "VexaVariable.h"

#include <algorithm>
#include <atomic>

#include "VexaCases.h"
#include "data/CaseText.h"

namespace {

/// The host compares only this many bytes of a text with its missing values.
constexpr int kMissingBytes = 8;
constexpr std::size_t kMostMissingValues = 3;

/// Ids are unique in the process, except those of copies.
unsigned long long nextId()
{
    static std::atomic<unsigned long long> last = 0;
    return ++last;
}

OBS number(double value)
{
    OBS unit{};
    unit.number = value;
    return unit;
}

} // namespace

VEXA_Variable::VEXA_Variable(int type) : _type(type), _labels(type), _id(nextId())
{
    if (type > 0)
        _format = {static_cast<std::uint16_t>(type), kFormatString, 0};
    _writeFormat = _format;
}

void VEXA_Variable::SetFormat(const VEXA_Format& format)
{
    // Callers that have not set both formats want equal ones.
    if (_writeFormat == _format)
        _writeFormat = format;
    _format = format;
}

VEXA_Format VEXA_Variable::GetFormatEx() const
{
    VEXA_Format full = _format;
    full.width = std::max(full.width, static_cast<std::uint16_t>(_type));
    return full;
}

void VEXA_Variable::NewID()
{
    _id = nextId();
}

int VEXA_Variable::GetMissingValues(const OBS*& first, const OBS*& second, const OBS*& third) const
{
    const OBS* found[3] = {};
    for (std::size_t i = 0; i < 3 && (i + 1) * _missingUnits <= _missing.size(); ++i)
        found[i] = &_missing[i * _missingUnits];
    first = found[0];
    second = found[1];
    third = found[2];
    return _missingCode;
}

bool VEXA_Variable::IsUserMissing(const char* text) const
{
    const auto width = static_cast<std::size_t>(_type);
    for (std::size_t at = 0; at < _missing.size(); at += _missingUnits) {
        const std::string_view missing(_missing[at].text, _missingUnits * sizeof(OBS));
        const std::string_view value(text, width);
        const std::size_t length = trimmedLength(missing);
        if (trimmedLength(value) == length && value.substr(0, length) == missing.substr(0, length))
            return true;
    }
    return false;
}

void VEXA_Variable::ClearMissingValues()
{
    _missing.clear();
    _missingUnits = 1;
    _missingCode = 0;
}

void VEXA_Variable::SetMissingValues(const std::vector<double>& values)
{
    ClearMissingValues();
    for (const double value : values)
        if (_missing.size() < kMostMissingValues)
            _missing.push_back(number(value));
    _missingCode = static_cast<int>(_missing.size());
}

void VEXA_Variable::SetMissingValues(const std::vector<std::string>& texts)
{
    ClearMissingValues();
    const std::size_t count = std::min(texts.size(), kMostMissingValues);
    std::size_t longest = kMissingBytes;
    for (const std::string& text : texts)
        longest = std::max(longest, text.size());
    _missingUnits = unitsOfWidth(static_cast<int>(longest));
    for (std::size_t i = 0; i < count; ++i) {
        const std::vector<OBS> units = unitsOfText(texts[i], static_cast<int>(longest));
        _missing.insert(_missing.end(), units.begin(), units.end());
    }
    _missingCode = static_cast<int>(count);
}

void VEXA_Variable::SetMissingRange(double from, double to)
{
    ClearMissingValues();
    _missing = {number(from), number(to)};
    _missingCode = -2;
}

void VEXA_Variable::SetMissingRange(double from, double to, double value)
{
    SetMissingRange(from, to);
    _missing.push_back(number(value));
    _missingCode = -3;
}
