#include "data/CaseCopy.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "ErrorText.h"
#include "FileServices.h"
#include "base/NativePath.h"
#include "data/CaseText.h"
#include "text/CodePage.h"

namespace {

/// A quarter of a megabyte, so that system calls are rare whatever the size of a case.
constexpr std::size_t kBufferUnits = std::size_t{256} * 1024 / sizeof(OBS);

[[noreturn]] void fail(const char* what, int error)
{
    throw ErrorText(what + std::generic_category().message(error));
}

datafile::ScratchFile newFile()
{
    try {
        return datafile::ScratchFile(base::nativePath(hostToUtf8(GetVexaTempPath())));
    } catch (const std::system_error& error) {
        throw ErrorText(std::string("the cases cannot be kept: ") + error.what());
    }
}

} // namespace

CaseCopy::CaseCopy(const std::vector<int>& widths) : _file(newFile())
{
    for (const int width : widths) {
        _offsets.push_back(_units);
        _widths.push_back(unitsOfWidth(width));
        _units += _widths.back();
    }
    _pending = newBuffer();
}

std::vector<OBS> CaseCopy::newBuffer() const
{
    // At least one case, so that every read makes progress.
    return std::vector<OBS>(_units == 0 ? 0
                                        : std::max<std::size_t>(kBufferUnits / _units, 1) * _units);
}

void CaseCopy::add(const VEXA_InputCaseIterator& cases)
{
    ++_count;
    for (std::size_t i = 0; i < _widths.size(); ++i)
        std::copy_n(cases.GetObsPointer(static_cast<int>(i)), _widths[i],
                    _pending.begin() + static_cast<std::ptrdiff_t>(_used + _offsets[i]));
    _used += _units;
    if (_used == _pending.size())
        flush();
}

void CaseCopy::flush()
{
    const auto* bytes = reinterpret_cast<const char*>(_pending.data());
    if (!_file.write({bytes, _used * sizeof(OBS)}))
        fail("the cases cannot be kept: ", errno);
    _used = 0;
}

void CaseCopy::finish()
{
    flush();
    _pending = {};
}

std::size_t CaseCopy::read(long long first, std::vector<OBS>& buffer) const
{
    const auto left = static_cast<std::size_t>(_count - first);
    // A case without columns still counts.
    if (_units == 0)
        return left;
    const std::size_t cases = std::min(buffer.size() / _units, left);
    const std::size_t bytes = cases * _units * sizeof(OBS);
    const ssize_t got =
        _file.readAt(static_cast<std::size_t>(first) * _units * sizeof(OBS), buffer.data(), bytes);
    if (got != static_cast<ssize_t>(bytes))
        fail("the copy of the cases cannot be read on: ", got < 0 ? errno : EIO);
    return cases;
}

CopiedCases::CopiedCases(std::shared_ptr<const CaseCopy> copy)
    : _copy(std::move(copy)), _buffer(_copy->newBuffer())
{
}

int CopiedCases::NextCase()
{
    if (_left == 0) {
        _left = _copy->read(_count, _buffer);
        if (_left == 0)
            return 0;
        _case = _buffer.data();
    } else {
        _case += _copy->units();
    }
    --_left;
    ++_count;
    return 1;
}
