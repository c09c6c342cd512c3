#include "hvhost/input/OutputFile.h"

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/OutputPath.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/base/StandardStreams.h"
#include "hvl/HVLWrite.h"
#include "support/HVSimpleFile.h"

OutputFile::OutputFile(const OutputOptions& options, FileOptions offered,
                       const InterruptWatch& watch)
    : _options(options), _watch(watch),
      _password(readPassword(options.password, options.passwordFile, watch)),
      _kind(outputKind(options.kind, options.path,
                       offered == FileOptions::Offered ? "--to" : nullptr))
{
    refusePassword(_options.path, _kind, _password, "--out-password");
    if (_options.path == kStandardStream && _options.dataModel == kStandardStream)
        throw CommandFault(ExitStatus::Usage,
                           "--out-data-model -: the records go to standard output already");
    const auto place = [&](const std::string& name, std::unique_ptr<HVSimpleFile>& collected) {
        if (name != kStandardStream)
            return outputPath(name, _options.force);
        collected = std::make_unique<HVSimpleFile>("output", false, true);
        return nativePath(collected->GetGenericPath());
    };
    if (!_options.dataModel.empty())
        _dataModelPath = place(_options.dataModel, _collectedDocument);
    _path = place(_options.path, _collected);
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
    case DataKind::Json: // no output has these kinds
    case DataKind::Sheet:
        write.WriteHVBF(url);
        break;
    }
    if (!_options.dataModel.empty())
        write.SetDataModel(engineUrl(_dataModelPath));
}

std::vector<JobOrigin::File> OutputFile::origins() const
{
    return {{_path, _collected ? kTemporaryFile : _options.path},
            {_dataModelPath, _collectedDocument ? kTemporaryFile : _options.dataModel}};
}

void OutputFile::deliver() const
{
    if (_collected)
        deliverToStandardOutput(_path, _watch);
    if (_collectedDocument)
        deliverToStandardOutput(_dataModelPath, _watch);
}
