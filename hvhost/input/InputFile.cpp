#include "hvhost/input/InputFile.h"

#include <fstream>
#include <iterator>
#include <limits>
#include <stdexcept>

#include "CFMetaData.h"
#include "CaseFileError.h"
#include "TextImport.h"
#include "datafile/CsvProfile.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/input/CsvSeparator.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputOptionRules.h"
#include "hvhost/input/KeptMissing.h"
#include "hvhost/input/TextForm.h"
#include "hvhost/input/TextReasonFault.h"
#include "hvl/HVLRead.h"
#include "support/HVSimpleFile.h"

namespace {

constexpr const char* kNeedsHost = "leave out --direct, --data-model and --max-errors";

/// Throws CFMetaDataError for an invalid document.
CFMetaData documentIn(const std::string& path)
{
    std::ifstream document(path, std::ios::binary);
    return CFMetaData(std::string(std::istreambuf_iterator<char>(document), {}));
}

/// What the options say about a csv file.
GivenText givenText(const InputOptions& options)
{
    return {.separator = options.separator.empty() ? '\0' : separatorOf(options.separator),
            .comment = options.comment.empty() ? '\0' : options.comment.front(),
            .skipped = static_cast<std::uint64_t>(options.skippedLines.value_or(0)),
            .hasHeader =
                options.noHeader || options.header ? std::optional(options.header) : std::nullopt};
}

/// What the file itself declares that only the host heeds; empty if nothing.
std::string hostReasonOf(const Dataset& dataset)
{
    if (dataset.weight() >= 0)
        return "the file declares a weight";
    return dataset.split().empty() ? "" : "the file declares a split";
}

std::vector<std::string> fieldNames(const CFMetaData& model)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        names.push_back(model.GetField(i)->GetName());
    return names;
}

} // namespace

InputFile::InputFile(const InputOptions& options, FileOptions offered, const InterruptWatch& watch,
                     Reader reader)
    : _options(options), _watch(watch), _offered(offered),
      _file(options.path, watch, FileParts::Accepted),
      _password(readPassword(options.password, options.passwordFile, watch)), _kind(unpackedKind()),
      _hasFormOptions(!options.kindOption.empty())
{
    if (_file.hasParts() && _kind != DataKind::Hvbf)
        throw CommandFault(ExitStatus::Input,
                           _options.path + ": only Parquet files are read as a folder or by a "
                                           "pattern",
                           "hvhost append FILE FILE... OUT joins files of other kinds");
    refusePassword(_options.path, _kind, _password, "--password");
    refuseOptionsOfOtherKinds(_options, _kind);
    if (_kind == DataKind::Csv) {
        _head = textHead(_file.path(), givenText(options));
        _form = {_head.dialect.separator, _options.decimalComma};
        _options.noHeader = !_head.hasHeader;
    }
    if (needsImport())
        import();
    if (!_options.dataModel.empty())
        _dataModel.emplace(_options.dataModel, watch);
    if (!isReadByHost(reader)) {
        refuseForEngine();
    } else {
        _known = nullptr;
        _dataset = openDataset(DatasetUse::Cases);
        if (!_options.weight.empty())
            explainingTexts(*this, [this] { _dataset->setWeight(_options.weight); });
    }
    if (!_dataset && _options.userMissing == "keep")
        keepMissing();
}

/// Unpacks a compressed file. Returns the kind of its content.
DataKind InputFile::unpackedKind()
{
    if (IsPackedFile(_file.path())) {
        auto content = std::make_unique<HVSimpleFile>("unpacked", false, true);
        try {
            const InterruptWatch::Abandonable abandonable(_watch);
            UnpackFile(
                _file.path(), [this] { _watch.check(); }, nativePath(content->GetGenericPath()));
        } catch (const ErrorText& error) {
            throw inputFault(error, _file);
        }
        _watch.check();
        _file.replaceBy(std::move(content));
    }
    return inputKind(_options.kind, _options.path, _file.path(),
                     _offered == FileOptions::Offered ? _options.kindOption.c_str() : nullptr);
}

bool InputFile::isReadByHost(Reader reader)
{
    // Only the engine supports data model documents and skipping bad records.
    if (_options.direct || _dataModel || _options.maxErrors)
        return false;
    _hostReason = reader == Reader::Host ? "the command works on a dataset" : hostReason();
    if (_hostReason.empty() && hasDictionary())
        _hostReason = hostReasonOf(known());
    return !_hostReason.empty();
}

/// What the options or the form of the file need of the host; empty if nothing.
std::string InputFile::hostReason() const
{
    if (_options.served)
        return "--served is given";
    if (!_options.weight.empty())
        return "--weight is given";
    if (!_options.encoding.empty())
        return "--encoding is given";
    if (_form.decimalComma)
        return "--decimal-comma is given";
    if (_form.separator != ',')
        return std::string(separatorWord(_form.separator)) + " separates the fields";
    return {};
}

std::vector<std::string> InputFile::notes() const
{
    std::vector<std::string> all{_dataset ? "the host serves the cases, because " + _hostReason
                                          : "the engine reads the file"};
    all.insert(all.end(), _head.notes.begin(), _head.notes.end());
    for (std::string& note : all)
        note.insert(0, _file.name() + ": ");
    return all;
}

std::vector<std::string> InputFile::doubts() const
{
    std::vector<std::string> all;
    for (const TextDoubt& doubt : _head.doubts)
        all.push_back(_file.name() + ": " + doubt.what +
                      (_hasFormOptions && !doubt.remedy.empty() ? "; " + doubt.remedy : ""));
    return all;
}

std::unique_ptr<Dataset> InputFile::openDataset(DatasetUse use) const
{
    return std::make_unique<Dataset>(_options, _file, _kind, _form, _password, _watch, use);
}

/// The file as a dataset, for what its dictionary says.
const Dataset& InputFile::known() const
{
    if (!_known)
        _known = openDataset(DatasetUse::Dictionary);
    return *_known;
}

InputFile::~InputFile() = default;

/// Whether only TextImport reads the file.
bool InputFile::needsImport() const
{
    const bool isText = _kind == DataKind::Csv;
    return _kind == DataKind::Json || _kind == DataKind::Sheet ||
           (isText &&
            (!_options.missing.empty() || !_options.types.empty() || !_options.dateFormat.empty() ||
             !_options.thousands.empty() || !_options.comment.empty() || _options.skippedLines ||
             isUtf16(_file.path()) || isImportedByHead()));
}

/// Whether the first lines are written as only TextImport reads them. Bad records can be skipped,
/// and a data model be used, only in a plain file.
bool InputFile::isImportedByHead() const
{
    return !_head.isPlain() && !_options.maxErrors && _options.dataModel.empty();
}

/// Whether the file can declare a weight, a split or missing values.
bool InputFile::hasDictionary() const
{
    return _kind != DataKind::Csv && !_isImported;
}

/// The same records in another kind of file.
std::unique_ptr<HVSimpleFile> InputFile::imported(std::vector<TextDoubt>& doubts) const
{
    auto records = std::make_unique<HVSimpleFile>("records.hvbf", false, true);
    {
        const InterruptWatch::Abandonable abandonable(_watch);
        doubts = importText(_file, textImport(_options, _kind, _head, _watch),
                            nativePath(records->GetGenericPath()), _options.kindOption);
    }
    _watch.check();
    return records;
}

/// Replaces the file by the same records in another kind.
void InputFile::import()
{
    if (_options.maxErrors)
        throw CommandFault(ExitStatus::Usage,
                           "--max-errors: only a plain csv file is read without its bad records");
    std::vector<TextDoubt> doubts;
    _file.replaceBy(imported(doubts));
    _head.doubts.insert(_head.doubts.end(), doubts.begin(), doubts.end());
    _isImported = true;
    if (_kind == DataKind::Json)
        _hasFormOptions = false; // they are for separated fields and sheets
    _kind = DataKind::Hvbf;
    _form = {};
    _options.encoding.clear();
}

void InputFile::refuseForEngine() const
{
    const auto refuse = [](const std::string& what, const std::string& hint = kNeedsHost) {
        throw CommandFault(ExitStatus::Usage, what, hint);
    };
    if (!_options.encoding.empty())
        refuse("--encoding: the engine reads UTF-8 only");
    if (!_options.weight.empty())
        refuse("--weight: only the host weighs a dataset");
    if (_form.decimalComma)
        refuse("--decimal-comma: the engine reads numbers such as 1234.5 only");
    if (_form.separator != ',')
        refuse(_file.name() + ": " + separatorWord(_form.separator) +
                   " separates the fields, and the engine reads commas only",
               _offered == FileOptions::Offered ? kNeedsHost
                                                : "hvhost convert writes the file with commas");
}

/// A csv file without a document declares nothing. The engine rejects an invalid document.
void InputFile::keepMissing()
{
    if (_dataModel) {
        try {
            _kept = std::make_unique<KeptMissing>(documentIn(_dataModel->path()));
        } catch (const CFMetaDataError&) {
            _kept = nullptr;
        }
    } else if (hasDictionary()) {
        keepMissingOfDataset();
    }
    if (_kept && !_kept->isNeeded())
        _kept = nullptr;
}

/// A file that the host rejects is also rejected by the engine. The engine's hints then fit every
/// command.
void InputFile::keepMissingOfDataset()
try {
    _kept = std::make_unique<KeptMissing>(known().file());
} catch (const CommandFault&) {
    if (_offered == FileOptions::Offered)
        throw;
}

bool InputFile::declaresMissing() const
{
    const Dataset* const dataset = _dataset ? _dataset.get() : _known.get();
    if (dataset == nullptr || _kept)
        return _kept != nullptr;
    for (int column = 0; column < dataset->source().ColumnCount(); ++column)
        if (dataset->file().Field(column).GetMissingValues() != CFMissingValues())
            return true;
    return false;
}

void InputFile::excludeMissing()
{
    _kept = nullptr;
}

std::vector<std::string> InputFile::names() const
{
    if (_dataset)
        return _dataset->names();
    try {
        return namesForEngine();
    } catch (const CommandFault& fault) {
        if (fault.status() != ExitStatus::Input)
            throw;
    } catch (const std::runtime_error&) { // NOLINT(bugprone-empty-catch)
        // The engine reports the error of the file, with hints that fit the command.
    }
    return {};
}

std::vector<std::string> InputFile::namesForEngine() const
{
    if (_dataModel)
        return fieldNames(documentIn(_dataModel->path()));
    if (_kind == DataKind::Csv)
        return datafile::CsvProfile(_file.path(), !_options.noHeader).names();
    return known().names();
}

std::vector<datafile::TextReason> InputFile::textReasons() const
{
    const auto goOn = [this] {
        _watch.check();
        return true;
    };
    if (_isImported)
        return datafile::textReasonsOfParquet(_file.path(), goOn);
    if (_kind != DataKind::Csv)
        return {};
    if (_form.isPlain() && _options.encoding.empty())
        return datafile::textReasons(_file.path(), !_options.noHeader, goOn);
    std::vector<TextDoubt> doubts;
    const auto records = imported(doubts);
    return datafile::textReasonsOfParquet(nativePath(records->GetGenericPath()), goOn);
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
    if (_options.first)
        read.SetMaxCaseCount(static_cast<unsigned long long>(*_options.first));
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
    case DataKind::Json: // these were imported
    case DataKind::Sheet:
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
