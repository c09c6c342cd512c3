#include "DataFile.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <limits>

#include "CommandFault.h"
#include "StandardStreams.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "support/HVSimpleFile.h"
#include "support/Paths.h"

namespace fs = std::filesystem;

namespace {

/// The path as the engine takes it.
std::string engineUrl(const std::string& path)
{
    return NormalizeHvlPathU(FormalizeFilePath(path, false), "file");
}

/// The password that is given, or that is on the first line of a file.
std::string readPassword(const std::string& given, const std::string& file,
                         const InterruptWatch& watch)
{
    if (file.empty())
        return given;
    const ReadableFile source(file, watch);
    std::ifstream stream(source.path());
    std::string password;
    std::getline(stream, password);
    if (password.ends_with('\r'))
        password.pop_back();
    if (password.empty())
        throw CommandFault(ExitStatus::Input,
                           file + ": the first line of this file, the password, is empty");
    return password;
}

void refusePassword(const std::string& path, DataKind kind, const std::string& password,
                    const char* option)
{
    if (kind != DataKind::Sav && !password.empty())
        throw CommandFault(ExitStatus::Usage, path + ": only a sav file takes a password",
                           std::string("leave ") + option + " out, or choose the kind sav");
}

/// The path of a file to write; a link stays, and what it points to is written. Throws CommandFault
/// for a place where the file cannot be, or may not.
std::string destination(const std::string& name, bool mayReplace)
{
    checkPath(name);
    std::error_code error;
    fs::path path = fs::weakly_canonical(fs::absolute(name), error);
    if (error)
        path = fs::absolute(name).lexically_normal();
    const fs::file_status status = fs::status(path, error);
    if (fs::is_directory(status))
        throw CommandFault(ExitStatus::Usage, name + ": this is a folder");
    const bool isThere = fs::status_known(status) && fs::exists(status);
    if (isThere && !fs::is_regular_file(status))
        throw CommandFault(ExitStatus::Usage, name + ": this is not a regular file",
                           "- stands for standard output");
    if (isThere && !mayReplace)
        throw CommandFault(ExitStatus::Usage, name + ": the file exists", "--force replaces it");
    const fs::path folder = path.parent_path();
    if (!fs::is_directory(folder, error))
        throw CommandFault(ExitStatus::JobFailed,
                           name + ": the folder " + folder.string() + " does not exist");
    if (access(folder.c_str(), W_OK | X_OK) != 0)
        throw CommandFault(ExitStatus::JobFailed, name + ": no file can be written in its folder",
                           "the permissions of the folder do not allow it");
    return path.string();
}

} // namespace

InputFile::InputFile(const InputOptions& options, FileOptions offered, const InterruptWatch& watch)
    : _options(options), _offered(offered), _file(options.path, watch),
      _password(readPassword(options.password, options.passwordFile, watch)),
      _kind(dataKind(options.kind, options.path,
                     offered == FileOptions::Offered ? "--from" : nullptr))
{
    refusePassword(_options.path, _kind, _password, "--password");
    if (!_options.dataModel.empty())
        _dataModel.emplace(_options.dataModel, watch);
}

JobOrigin InputFile::origin() const
{
    JobOrigin origin;
    origin.inputs = {{_file.path(), _file.name()}};
    if (_dataModel)
        origin.inputs.push_back({_dataModel->path(), _dataModel->name()});
    origin.hasInputOptions = _offered == FileOptions::Offered;
    return origin;
}

void InputFile::configure(HVLRead& read) const
{
    const std::string url = engineUrl(_file.path());
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
    if (_dataModel)
        read.SetDataModel(engineUrl(_dataModel->path()));
    if (_options.limit)
        read.SetMaxCaseCount(static_cast<unsigned long long>(*_options.limit));
    if (_options.maxErrors) {
        const bool any = *_options.maxErrors < 0;
        read.SetErrorThreshold(static_cast<unsigned long long>(
            any ? std::numeric_limits<long long>::max() : *_options.maxErrors));
    }
}

OutputFile::OutputFile(const OutputOptions& options, FileOptions offered,
                       const InterruptWatch& watch)
    : _options(options), _watch(watch),
      _password(readPassword(options.password, options.passwordFile, watch)),
      _kind(
          dataKind(options.kind, options.path, offered == FileOptions::Offered ? "--to" : nullptr))
{
    refusePassword(_options.path, _kind, _password, "--out-password");
    if (!_options.dataModel.empty())
        _options.dataModel = destination(_options.dataModel, _options.force);
    if (_options.path == kStandardStream) {
        _collected = std::make_unique<HVSimpleFile>("output", false, true);
        _path = nativePath(_collected->GetGenericPath());
    } else {
        _path = destination(_options.path, _options.force);
    }
}

OutputFile::~OutputFile() = default;

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
