#include <utility>

#include "UserCaseFile.h"
#include "base/AsciiText.h"

namespace {

constexpr std::pair<const char*, CaseFileKind> kExtensions[] = {
    {".csv", CaseFileKind::Csv},
    {".sav", CaseFileKind::Sav},
    {".hvbf", CaseFileKind::Parquet},
    {".parquet", CaseFileKind::Parquet},
};

/// The extension with its period, in lower case.
std::string extensionOf(const std::string& name)
{
    const std::size_t file = name.find_last_of("/\\") + 1;
    const std::size_t period = name.rfind('.');
    if (period == std::string::npos || period < file)
        return {};
    return base::lowerCase(name.substr(period));
}

} // namespace

bool UserCaseFileSpec::Init(const std::string& name, bool asIs, bool forOutput)
{
    _forOutput = forOutput;
    _name = name;
    if (!name.empty() && !asIs && extensionOf(name).empty())
        _name += ".sav";
    return !name.empty();
}

CaseFileKind UserCaseFileSpec::GetKind() const
{
    if (_kind != CaseFileKind::ByName)
        return _kind;
    for (const auto& [extension, kind] : kExtensions)
        if (extensionOf(_name) == extension)
            return kind;
    return CaseFileKind::Sav;
}
