#include "hvhost/base/ReadableFile.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/Utf8.h"
#include "datafile/ParquetParts.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/StandardStreams.h"
#include "support/HVSimpleFile.h"

namespace fs = std::filesystem;

namespace {

/// The type of a file. Throws CommandFault (Input) if the file is missing, a folder or unreadable.
fs::file_type typeOf(const std::string& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found)
        throw CommandFault(ExitStatus::Input, path + ": no such file");
    if (fs::is_directory(status))
        throw CommandFault(ExitStatus::Input, path + ": this is a folder, not a file");
    if (error && error != std::errc::permission_denied)
        throw CommandFault(ExitStatus::Input,
                           path + ": the file cannot be read: " + error.message());
    if (error || access(path.c_str(), R_OK) != 0)
        throw CommandFault(ExitStatus::Input, path + ": the file may not be read",
                           "its permissions, or those of its folder, do not allow it");
    return status.type();
}

} // namespace

void checkPath(const std::string& path)
{
    const std::string whole = fs::absolute(path).string();
    if (whole.find('\\') != std::string::npos)
        throw CommandFault(ExitStatus::Usage, path + ": a path with a backslash cannot be used",
                           "the host uses it as the separator of folders");
    if (!base::isUtf8(whole))
        throw CommandFault(ExitStatus::Usage, path + ": the path is not UTF-8");
}

std::string nativePath(const std::string& hostPath)
{
    std::string path = hostPath;
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

ReadableFile::ReadableFile(const std::string& name, const InterruptWatch& watch, FileParts parts)
    : _name(name == kStandardStream ? "standard input" : name),
      _hasParts(parts == FileParts::Accepted && datafile::hasParts(name))
{
    if (_hasParts) {
        checkPath(name);
        _path = fs::absolute(name / fs::path()).lexically_normal().parent_path().string();
        return;
    }
    if (name == kStandardStream || typeOf(name) != fs::file_type::regular) {
        fetch(name, watch);
    } else {
        checkPath(name);
        _path = fs::absolute(name).lexically_normal().string();
    }
    std::error_code error;
    if (fs::file_size(_path, error) == 0)
        throw CommandFault(ExitStatus::Input,
                           _name + (_fetched ? " is empty" : ": the file is empty"));
}

ReadableFile::~ReadableFile() = default;

void ReadableFile::replaceBy(std::unique_ptr<HVSimpleFile> file)
{
    _fetched = std::move(file);
    _path = nativePath(_fetched->GetGenericPath());
}

void ReadableFile::fetch(const std::string& source, const InterruptWatch& watch)
{
    _fetched = std::make_unique<HVSimpleFile>("input", false, true);
    _path = nativePath(_fetched->GetGenericPath());
    fetchStream(source, _path, watch);
}
