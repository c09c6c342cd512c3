#include "hvhost/input/Dataset.h"

#include <algorithm>
#include <map>
#include <utility>

#include "CaseFileError.h"
#include "data/HVDataModel.h"
#include "datafile/FaultIds.h"
#include "datafile/StartedThread.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/base/ValueText.h"
#include "hvhost/input/CsvSeparator.h"
#include "hvhost/input/KeptMissing.h"
#include "hvhost/input/NameLookup.h"
#include "hvhost/input/ServedField.h"
#include "hvhost/input/TextReasonFault.h"
#include "hvl/HVLUpdateDataModel.h"
#include "support/Paths.h"
#include "support/Transcoding.h"

namespace {

constexpr const char* kIteratorName = "cases";
const std::string kUsualKindOption = "--from"; ///< the option that the hints mention

CaseFileKind caseFileKind(DataKind kind)
{
    switch (kind) {
    case DataKind::Csv:
        return CaseFileKind::Csv;
    case DataKind::Sav:
        return CaseFileKind::Sav;
    default:
        return CaseFileKind::Parquet;
    }
}

std::string hintFor(const CaseFileError& error, const CsvForm& form, const std::string& kindOption)
{
    // The engine, which skips records, supports only commas.
    if (error.kind() == datafile::kinds::kFieldCount && form.separator != ',')
        return separatorWord(form.separator) + " was used as the separator; --separator " +
               "CHARACTER sets another one";
    static const std::map<std::string, const char*> kHostHints = {
        {CaseFileError::kNoRoomForCopy, kTemporaryHint},
        {CaseFileError::kOfHostMemory,
         "the engine may take more: --direct --user-missing exclude leaves the file to it"},
        {CaseFileError::kUnknownEncoding, "for example --encoding windows-1252"},
        {CaseFileError::kUnreadEncoding, "convert the file to UTF-8, for example with iconv"},
        {CaseFileError::kNotInEncoding, "--encoding names the encoding that it is in"},
    };
    if (const auto hint = kHostHints.find(error.kind()); hint != kHostHints.end())
        return hint->second;
    std::string hint = inputHint(error.id(), error.kind());
    if (kindOption.empty())
        return {}; // the command has no such options
    if (hint.starts_with(kUsualKindOption))
        hint.replace(0, kUsualKindOption.size(), kindOption);
    return hint;
}

void addGeo(HVLUpdateDataModel& update, const std::string& name, const CFGeo& geo)
{
    if (const auto& envelope = geo.GetEnvelope())
        update.Update(name, geo.GetType(), geo.GetCoordinates(), geo.GetWkid(), geo.GetCsname(),
                      geo.IsProjected(), geo.GetWkt(), envelope->leftUpperX, envelope->leftUpperY,
                      envelope->rightLowerX, envelope->rightLowerY);
    else
        update.Update(name, geo.GetType(), geo.GetCoordinates(), geo.GetWkid(), geo.GetCsname(),
                      geo.IsProjected(), geo.GetWkt());
}

/// `told` is the field in the file, `known` is the field in the served rows.
void addWhatIsTold(HVLUpdateDataModel& update, const CFField& told, const CFField& known)
{
    const std::string& name = known.GetName();
    if (told.GetStorage() == CFField::Integer && known.GetStorage() == CFField::Real)
        update.Update(name, CFField::Integer);
    if (told.GetType() != known.GetType())
        update.Update(name, told.GetType());
    if (told.GetRole() != known.GetRole())
        update.Update(name, told.GetRole());
    const bool comparable = told.GetStorage() == known.GetStorage() ||
                            (isNumber(told.GetStorage()) && isNumber(known.GetStorage()));
    if (comparable && told.GetMissingValues() != known.GetMissingValues())
        update.Update(name, possibleMissing(told));
    if (told.GetGeo() != nullptr)
        addGeo(update, name, *told.GetGeo());
}

} // namespace

CommandFault inputFault(const ErrorText& error, const ReadableFile& file, const CsvForm& form,
                        const std::string& kindOption)
{
    const auto* const known = dynamic_cast<const CaseFileError*>(&error);
    if (known == nullptr)
        return {ExitStatus::Input, error.what()};
    const std::string hint = hintFor(*known, form, kindOption);
    if (known->kind() == CaseFileError::kUnknownEncoding ||
        known->kind() == CaseFileError::kUnreadEncoding)
        return {ExitStatus::Usage, "--encoding: " + known->textFor({}), hint};
    return {ExitStatus::Input, known->textFor(file.name()), hint};
}

Dataset::Dataset(const InputOptions& options, const ReadableFile& file, DataKind kind,
                 const CsvForm& form, const std::string& password, const InterruptWatch& watch,
                 DatasetUse use)
    : _preload(datafile::startedTask("opens the host's database", &PreloadCaseFiles)),
      _readable(file)
{
    UserCaseFileSpec spec;
    spec.Init(FormalizeFilePath(file.path(), false), true, false);
    spec.SetKind(caseFileKind(kind));
    spec.SetPassword(password);
    spec.SetHeader(!options.noHeader);
    spec.SetCodePage(options.encoding);
    spec.SetCsvForm(form);
    // If the job keeps values that are declared missing, they are served as values. complete
    // declares them missing again.
    spec.SetDeclaresMissing(options.userMissing != "keep");
    spec.SetDictionaryOnly(use == DatasetUse::Dictionary);
    spec.SetMonitor(&_monitor);
    spec.SetLook([&watch] { watch.check(); });
    try {
        _file = std::make_unique<UserInputCaseFile>(spec, nullptr);
    } catch (const ErrorText& error) {
        throw inputFault(error, file, form, options.kindOption);
    }
    _weight = source().GetWeightVarIndex();
    for (int i = 0; i < source().GetNSplitVars(); ++i)
        _split.push_back(source().GetSplitVarIndex(i));
}

Dataset::~Dataset() = default;

HVRawDataIterator& Dataset::cases()
{
    if (_cases)
        return *_cases;
    try {
        _cases = makeCases();
    } catch (const ErrorText& error) {
        throw inputFault(error, _readable);
    }
    _cases->SetName(kIteratorName);
    _cases->SetTotalRecords(_file->CaseCount());
    return *_cases;
}

/// The library describes variables by their formats. If the file says something else, the iterator
/// gets the fields explicitly, over a view without the weight, because such an iterator would use
/// the weight.
std::unique_ptr<HVRawDataIterator> Dataset::makeCases()
{
    const HVDataModel model(source(), false, false, false);
    CFMetaData fields;
    std::vector<int> columns;
    bool isServedOtherwise = false;
    for (int column = 0; column < source().ColumnCount(); ++column) {
        const CFField& known = *model.getMetaData().GetField(static_cast<std::size_t>(column));
        fields.AppendField(served(column, known));
        columns.push_back(column);
        isServedOtherwise =
            isServedOtherwise || served(column, known).GetStorage() != known.GetStorage();
    }
    if (!isServedOtherwise)
        return std::make_unique<HVRawDataIterator>(source(), std::vector<int>(),
                                                   std::vector<MeasurementLevel>(), false,
                                                   kWeightNone, false, &_monitor);
    _unweighted.SetDataset(&source());
    _unweighted.SetWeightVarIndex(-1);
    _unweighted.SetSplitVars({});
    return std::make_unique<HVRawDataIterator>(_unweighted, fields, columns, &_monitor);
}

CFField Dataset::served(int column, const CFField& known) const
{
    return servedField(_file->Field(column), known);
}

int Dataset::columnOf(const std::string& name, const std::string& origin) const
{
    // A command may name each of thousands of variables.
    if (_columns.empty())
        for (int column = 0; column < source().ColumnCount(); ++column)
            _columns.emplace(nameOf(column), column);
    if (const auto exact = _columns.find(name); exact != _columns.end())
        return exact->second;
    return static_cast<int>(
        placeOfName(name, names(), {origin.empty() ? _readable.name() : origin}));
}

std::vector<std::string> Dataset::names() const
{
    std::vector<std::string> all;
    all.reserve(static_cast<std::size_t>(source().ColumnCount()));
    for (int column = 0; column < source().ColumnCount(); ++column)
        all.push_back(nameOf(column));
    return all;
}

std::string Dataset::nameOf(int column) const
{
    return transcodeToUTF8(source().GetVariable(column).GetName().c_str(), nullptr);
}

CFField::StorageType Dataset::storageOf(int column) const
{
    // One model for all columns: it takes time for each column of the dataset.
    if (_storages.empty()) {
        HVDataModel model(source(), false, false, false);
        for (int known = 0; known < source().ColumnCount(); ++known)
            _storages.push_back(
                served(known, *model.getMetaData().GetField(static_cast<std::size_t>(known)))
                    .GetStorage());
    }
    return _storages.at(static_cast<std::size_t>(column));
}

void Dataset::setWeight(const std::string& name)
{
    const std::string origin = "--weight " + name;
    const int column = columnOf(name, origin);
    const std::string problem =
        origin + ": a weight is a number, and this is a " + WordOf(storageOf(column));
    if (storageOf(column) == CFField::String)
        throw TextFieldFault(nameOf(column), problem);
    if (storageOf(column) != CFField::Real)
        throw CommandFault(ExitStatus::Usage, problem);
    _weight = column;
}

void Dataset::setSplit(const std::vector<std::string>& names)
{
    _split.clear();
    for (const std::string& name : names) {
        _split.push_back(columnOf(name, "--by " + name));
        if (std::count(_split.begin(), _split.end(), _split.back()) > 1)
            throw CommandFault(ExitStatus::Usage, "--by " + name + ": it is named twice");
    }
}

void Dataset::complete(HVLUpdateDataModel& update) const
{
    for (int column = 0; column < source().ColumnCount(); ++column) {
        const CFField& known = *_cases->getMetaData().GetField(static_cast<std::size_t>(column));
        CFField told = declaredField(_file->Field(column), known);
        // The user may have replaced the file's weight.
        if (column == _weight)
            told.SetRole(CFField::FrequencyWeight);
        else if (column == source().GetWeightVarIndex())
            told.SetRole(known.GetRole());
        addWhatIsTold(update, told, known);
    }
}
