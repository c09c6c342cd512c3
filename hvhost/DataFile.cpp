#include "DataFile.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string_view>

#include "CommandFault.h"
#include "StandardStreams.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "support/HVSimpleFile.h"
#include "support/Paths.h"

namespace fs = std::filesystem;

namespace {

struct KindWord
{
    std::string_view word;
    DataKind kind;
};
constexpr std::array<KindWord, 4> kKinds{{{"csv", DataKind::Csv},
                                          {"sav", DataKind::Sav},
                                          {"hvbf", DataKind::Hvbf},
                                          {"parquet", DataKind::Hvbf}}};

constexpr const char* kStandardStream = "-";

/// A password from a file: its first line.
std::string readPassword(const std::string& given, const std::string& file)
{
    if (file.empty())
        return given;
    std::ifstream stream(file);
    std::string password;
    if (!std::getline(stream, password))
        throw CommandFault(ExitStatus::Input, file + ": no password in this file");
    if (password.ends_with('\r'))
        password.pop_back();
    return password;
}

void refusePassword(const std::string& path, DataKind kind, const std::string& password,
                    const char* option)
{
    if (kind != DataKind::Sav && !password.empty())
        throw CommandFault(ExitStatus::Usage, path + ": only a sav file takes a password",
                           std::string("leave ") + option + " out, or choose the kind sav");
}

} // namespace

void checkReadable(const std::string& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status))
        throw CommandFault(ExitStatus::Input, path + ": no such file");
    if (fs::is_directory(status))
        throw CommandFault(ExitStatus::Input, path + ": this is a folder, not a data file");
    if (access(path.c_str(), R_OK) != 0)
        throw CommandFault(ExitStatus::Input, path + ": the file may not be read",
                           "its permissions do not allow it");
    if (fs::is_regular_file(status) && fs::file_size(path, error) == 0)
        throw CommandFault(ExitStatus::Input, path + ": the file is empty");
}

DataKind dataKind(const std::string& word, const std::string& path, const char* option)
{
    std::string wanted = word;
    if (wanted.empty() && path == kStandardStream)
        wanted = "csv";
    if (wanted.empty())
        wanted = fs::path(path).extension().string();
    if (!wanted.empty() && wanted.front() == '.')
        wanted.erase(0, 1);
    std::transform(wanted.begin(), wanted.end(), wanted.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    for (const KindWord& row : kKinds)
        if (row.word == wanted)
            return row.kind;
    throw CommandFault(ExitStatus::Usage, path + ": the kind of file is not clear from its name",
                       std::string(option) + " csv, sav or hvbf names it");
}

std::string nativePath(const std::string& hostPath)
{
    std::string path = hostPath;
    for (char& character : path)
        if (character == '\\')
            character = '/';
    return path;
}

std::string engineUrl(const std::string& path)
{
    return NormalizeHvlPathU(FormalizeFilePath(fs::absolute(path).string(), false), "file");
}

InputFile::InputFile(const InputOptions& options, const InterruptWatch& watch)
    : _options(options), _password(readPassword(options.password, options.passwordFile)),
      _kind(dataKind(options.kind, options.path, "--from"))
{
    refusePassword(_options.path, _kind, _password, "--password");
    if (!_options.dataModel.empty())
        checkReadable(_options.dataModel);
    if (_options.path == kStandardStream) {
        _fetched = std::make_unique<HVSimpleFile>("stdin", false, true);
        _path = nativePath(_fetched->GetGenericPath());
        fetchStandardInput(_path, watch);
        if (fs::is_empty(_path))
            throw CommandFault(ExitStatus::Input, "standard input is empty");
        return;
    }
    checkReadable(_options.path);
    _path = fs::absolute(_options.path).lexically_normal().string();
}

InputFile::~InputFile() = default;

JobOrigin::File InputFile::origin() const
{
    return {_path, _options.path == kStandardStream ? "standard input" : _options.path};
}

void InputFile::configure(HVLRead& read) const
{
    const std::string url = engineUrl(_path);
    switch (_kind) {
    case DataKind::Csv:
        read.ReadCSV(url, !_options.noHeader);
        break;
    case DataKind::Sav:
        read.ReadSAV(url, _password);
        break;
    case DataKind::Hvbf:
        read.ReadHVBF(url);
        break;
    }
    if (!_options.dataModel.empty())
        read.SetDataModel(engineUrl(_options.dataModel));
    if (_options.limit)
        read.SetMaxCaseCount(static_cast<unsigned long long>(*_options.limit));
    if (_options.maxErrors) {
        const bool any = *_options.maxErrors < 0;
        read.SetErrorThreshold(static_cast<unsigned long long>(
            any ? std::numeric_limits<long long>::max() : *_options.maxErrors));
    }
}

OutputFile::OutputFile(const OutputOptions& options, const InterruptWatch& watch)
    : _options(options), _watch(watch),
      _password(readPassword(options.password, options.passwordFile)),
      _kind(dataKind(options.kind, options.path, "--to"))
{
    refusePassword(_options.path, _kind, _password, "--out-password");
    if (_options.path == kStandardStream) {
        _collected = std::make_unique<HVSimpleFile>("stdout", false, true);
        _path = nativePath(_collected->GetGenericPath());
        return;
    }
    _path = fs::absolute(_options.path).lexically_normal().string();
    checkDestination();
}

OutputFile::~OutputFile() = default;

void OutputFile::checkDestination() const
{
    if (fs::is_directory(_path))
        throw CommandFault(ExitStatus::Usage, _options.path + ": this is a folder");
    if (fs::exists(_path) && !_options.force)
        throw CommandFault(ExitStatus::Usage, _options.path + ": the file exists",
                           "--force replaces it");
    if (!fs::is_directory(fs::path(_path).parent_path()))
        throw CommandFault(ExitStatus::JobFailed, _options.path + ": the folder " +
                                                      fs::path(_path).parent_path().string() +
                                                      " does not exist");
    if (access(fs::path(_path).parent_path().c_str(), W_OK) != 0)
        throw CommandFault(ExitStatus::JobFailed,
                           _options.path + ": no file can be written in its folder",
                           "the permissions of the folder do not allow it");
    if (!_options.dataModel.empty() && fs::exists(_options.dataModel) && !_options.force)
        throw CommandFault(ExitStatus::Usage, _options.dataModel + ": the file exists",
                           "--force replaces it");
}

void OutputFile::configure(HVLWrite& write) const
{
    const std::string url = engineUrl(_path);
    switch (_kind) {
    case DataKind::Csv:
        write.WriteCSV(url);
        break;
    case DataKind::Sav:
        write.WriteSAV(url, _password);
        break;
    case DataKind::Hvbf:
        write.WriteHVBF(url);
        break;
    }
    if (!_options.dataModel.empty())
        write.SetDataModel(engineUrl(_options.dataModel));
}

void OutputFile::deliver() const
{
    if (_collected)
        deliverToStandardOutput(_path, _watch);
}
