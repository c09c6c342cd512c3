#include "DataFile.h"

#include <fstream>
#include <iterator>
#include <limits>

#include "CFMetaData.h"
#include "CommandFault.h"
#include "Dataset.h"
#include "KeptMissing.h"
#include "OutputPath.h"
#include "StandardStreams.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "support/HVSimpleFile.h"
#include "support/Paths.h"

namespace {

constexpr const char* kNeedsHost = "leave out --direct, --data-model and --max-errors";

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

} // namespace

InputFile::InputFile(const InputOptions& options, FileOptions offered, const InterruptWatch& watch)
    : _options(options), _offered(offered), _file(options.path, watch),
      _password(readPassword(options.password, options.passwordFile, watch)),
      _kind(dataKind(options.kind, options.path,
                     offered == FileOptions::Offered ? options.kindOption.c_str() : nullptr))
{
    refuseOptions();
    if (!_options.dataModel.empty())
        _dataModel.emplace(_options.dataModel, watch);
    // Documents beside a file, and records to be skipped, are the engine's affair.
    if (!_options.direct && !_dataModel && !_options.maxErrors)
        openDataset();
    else if (!_options.encoding.empty())
        throw CommandFault(ExitStatus::Usage, "--encoding: the engine reads UTF-8 only",
                           kNeedsHost);
    else if (!_options.weight.empty())
        throw CommandFault(ExitStatus::Usage, "--weight: only the host weighs a dataset",
                           kNeedsHost);
    if (!_dataset && _options.userMissing == "keep")
        keepMissing();
}

void InputFile::openDataset()
{
    _dataset = std::make_unique<Dataset>(_options, _file, _kind, _password);
    if (!_options.weight.empty())
        _dataset->setWeight(_options.weight);
}

InputFile::~InputFile() = default;

/// An option that would do nothing is refused: nobody should believe that it did something.
void InputFile::refuseOptions() const
{
    refusePassword(_options.path, _kind, _password, "--password");
    if (_kind == DataKind::Csv)
        return;
    const auto refuse = [this](bool given, const char* option) {
        if (given)
            throw CommandFault(ExitStatus::Usage,
                               std::string(option) + ": " + _options.path + " is no csv file",
                               std::string("leave ") + option + " out, or choose the kind csv");
    };
    refuse(_options.noHeader, "--no-header");
    refuse(!_options.encoding.empty(), "--encoding");
    refuse(_options.maxErrors.has_value(), "--max-errors");
}

/// A csv file without a document declares nothing, and a document that cannot be read is the
/// engine's to refuse.
void InputFile::keepMissing()
{
    if (_dataModel) {
        std::ifstream document(_dataModel->path(), std::ios::binary);
        try {
            _kept = std::make_unique<KeptMissing>(
                CFMetaData(std::string(std::istreambuf_iterator<char>(document), {})));
        } catch (const CFMetaDataError&) {
            _kept = nullptr;
        }
    } else if (_kind != DataKind::Csv) {
        _kept = std::make_unique<KeptMissing>(Dataset(_options, _file, _kind, _password).file());
    }
    if (_kept && !_kept->isNeeded())
        _kept = nullptr;
}

HVStatDataIterator* InputFile::rows() const
{
    return _dataset ? &_dataset->cases() : nullptr;
}

JobOrigin InputFile::origin() const
{
    JobOrigin origin;
    origin.inputs = {{_file.path(), _file.name()}};
    if (_dataModel)
        origin.inputs.push_back({_kept ? _kept->path() : _dataModel->path(), _dataModel->name()});
    origin.hasInputOptions = _offered == FileOptions::Offered;
    return origin;
}

void InputFile::configure(HVLRead& read) const
{
    if (_options.limit)
        read.SetMaxCaseCount(static_cast<unsigned long long>(*_options.limit));
    if (_dataset)
        read.ReadIterator(_dataset->cases());
    else
        configureFile(read);
}

void InputFile::complete(HVLUpdateDataModel& update) const
{
    if (_dataset)
        _dataset->complete(update);
    if (_kept)
        _kept->redeclare(update);
}

void InputFile::finish() const
{
    if (_dataset)
        _dataset->finish();
}

void InputFile::configureFile(HVLRead& read) const
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
    if (_kept)
        read.SetDataModel(engineUrl(_kept->path()));
    else if (_dataModel)
        read.SetDataModel(engineUrl(_dataModel->path()));
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
        _options.dataModel = outputPath(_options.dataModel, _options.force);
    if (_options.path == kStandardStream) {
        _collected = std::make_unique<HVSimpleFile>("output", false, true);
        _path = nativePath(_collected->GetGenericPath());
    } else {
        _path = outputPath(_options.path, _options.force);
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
