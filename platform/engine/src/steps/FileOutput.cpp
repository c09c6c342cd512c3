#include "steps/FileOutput.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/FieldDictionary.h"
#include "datafile/SealedFile.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kStep = "write";

/// Thrown between two chunks when the job is cancelled. The job checks for the cancellation itself.
struct Stopped
{
};

} // namespace

FileOutput::FileOutput(JobContext& context, FileOutputSettings settings, Fields fields,
                       const Dialect& dialect)
    : _context(context), _dialect(dialect), _settings(std::move(settings)),
      _fields(std::move(fields)), _files(_settings.path, _settings.modelPath, kStep)
{
    _files.announce(_context);
}

std::string FileOutput::statement(const std::string& select)
{
    reportCutMissing();
    std::string path = _files.dataPath();
    if (!_settings.password.empty()) {
        try {
            _plain = std::make_unique<ScratchFile>(_context.files.scratchFolder());
        } catch (const std::system_error& error) {
            throw JobError(errors::kFileUnwritable,
                           {.step = kStep,
                            .file = _settings.path,
                            .what = std::string("the file cannot be sealed: ") + error.what()});
        }
        path = _plain->path();
    }
    // The name is already temporary; commit renames the file.
    FileTarget target{path, _settings.kind == FileKind::Csv, _fields};
    if (!target.isCsv)
        describeFields(target);
    return _dialect.fileOf(select, target);
}

void FileOutput::reportCutMissing() const
{
    if (_settings.kind != FileKind::Sav)
        return;
    for (const CFField& field : _fields)
        if (!holdsMissingValues(field))
            _context.message(errors::kMissingCut,
                             {.step = kStep,
                              .file = _settings.path,
                              .field = field.GetName(),
                              .what = "the field \"" + field.GetName() +
                                      "\" has more single missing values than a SAV file holds; "
                                      "the first are kept"});
}

/// Adds the description of the fields to the file's metadata.
void FileOutput::describeFields(FileTarget& target) const
{
    const bool isSav = _settings.kind == FileKind::Sav;
    target.key = isSav ? kDictionaryKey : kDataModelKey;
    target.entry = isSav ? dictionaryText(dictionaryOfFields(_fields)) : dataModelOf(_fields);
}

void FileOutput::seal()
{
    const FileDescriptor sealed(open(_files.dataPath().c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC));
    if (!sealed)
        PendingFile::refuse(kStep, _settings.path, errno);
    try {
        _plain->rewind();
        sealFile(_plain->descriptor(), sealed.get(), _settings.password, [this] {
            if (_context.stopping())
                throw Stopped{};
        });
    } catch (const Stopped&) {
        throw JobError(errors::kQueryFailed,
                       {.step = kStep, .file = _settings.path, .what = "the job was stopped"});
    } catch (const SealedFileError& error) {
        if (error.code() != 0)
            PendingFile::refuse(kStep, _settings.path, error.code());
        throw JobError(errors::kFileUnwritable,
                       {.step = kStep,
                        .file = _settings.path,
                        .what = std::string("the file cannot be sealed: ") + error.what()});
    }
    _plain.reset();
}

void FileOutput::commit()
{
    if (_plain)
        seal();
    // Before the files get their final names: nothing may fail after that.
    forgetProfiles();
    const std::string name = fileNameOf(_settings.path);
    std::map<std::string, WrittenFile> written;
    written[name] = {_settings.path, _settings.kind, _fields, _settings.password};
    _files.commit(_context, _fields);
    _context.written.erase(name);
    _context.written.merge(written);
}

/// The next statement that reads the file will find other records and perhaps other fields.
void FileOutput::forgetProfiles()
{
    const std::string path = canonicalPath(_settings.path);
    std::erase_if(_context.profiles,
                  [&path](const auto& known) { return canonicalPath(known.first.first) == path; });
}

} // namespace EmbeddedHV
