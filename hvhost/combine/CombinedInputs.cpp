#include "hvhost/combine/CombinedInputs.h"

#include <algorithm>
#include <utility>

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/job/CopiedMissing.h"
#include "hvhost/job/HostSession.h"
#include "hvl/HVLUpdateDataModel.h"

namespace {

/// Options for one kind of file, as a word for messages.
struct FormOption
{
    bool isGiven;
    const char* name;
    DataKind kind;
    bool isOfSheets = false; ///< sheets have it as well
};

std::vector<FormOption> formOptions(const InputOptions& form)
{
    return {{form.noHeader, "--no-header", DataKind::Csv, true},
            {form.header, "--header", DataKind::Csv, true},
            {!form.encoding.empty(), "--encoding", DataKind::Csv},
            {!form.separator.empty(), "--separator", DataKind::Csv},
            {form.decimalComma, "--decimal-comma", DataKind::Csv},
            {!form.missing.empty(), "--missing", DataKind::Csv, true},
            {!form.types.empty(), "--type", DataKind::Csv, true},
            {!form.dateFormat.empty(), "--date-format", DataKind::Csv},
            {!form.thousands.empty(), "--thousands", DataKind::Csv},
            {!form.comment.empty(), "--comment", DataKind::Csv},
            {form.skippedLines.has_value(), "--skip", DataKind::Csv, true},
            {!form.sheet.empty(), "--sheet", DataKind::Sheet},
            {!form.password.empty(), "--password", DataKind::Sav},
            {!form.passwordFile.empty(), "--password-file", DataKind::Sav}};
}

const char* articleOfKind(DataKind kind)
{
    return kind == DataKind::Csv ? "a csv" : kind == DataKind::Sav ? "a sav" : "an xlsx";
}

void refuseUseless(const InputOptions& form, const std::vector<DataKind>& kinds)
{
    for (const FormOption& option : formOptions(form)) {
        const bool hasEffect = std::ranges::any_of(kinds, [&](DataKind kind) {
            return kind == option.kind || (option.isOfSheets && kind == DataKind::Sheet);
        });
        if (option.isGiven && !hasEffect)
            throw CommandFault(ExitStatus::Usage,
                               std::string(option.name) + ": none of the files is " +
                                   articleOfKind(option.kind) + " file",
                               std::string("leave ") + option.name + " out");
    }
}

InputOptions withoutCsvForm(InputOptions form)
{
    form.decimalComma = false;
    form.encoding.clear();
    form.separator.clear();
    form.dateFormat.clear();
    form.thousands.clear();
    form.comment.clear();
    return form;
}

InputOptions withoutTextForm(InputOptions form)
{
    form = withoutCsvForm(std::move(form));
    form.noHeader = form.header = false;
    form.missing.clear();
    form.types.clear();
    form.skippedLines.reset();
    form.sheet.clear();
    return form;
}

InputOptions textFormFor(DataKind kind, InputOptions form)
{
    if (kind == DataKind::Sheet)
        return withoutCsvForm(std::move(form));
    if (kind != DataKind::Csv)
        return withoutTextForm(std::move(form));
    form.sheet.clear();
    return form;
}

/// The options that fit a file of this kind.
InputOptions fittingForm(const CombineOptions& options, const std::string& path, DataKind kind)
{
    InputOptions form = textFormFor(kind, options.form);
    form.path = path;
    if (kind != DataKind::Sav) {
        form.password.clear();
        form.passwordFile.clear();
    }
    return copiedReading(form, options.records);
}

bool isForEngine(const InputOptions& reading, const InputFile& file)
{
    if (file.kind() != DataKind::Csv)
        return true;
    return reading.encoding.empty() && !reading.decimalComma && file.separator() == ',';
}

const char* wordOfKind(DataKind kind)
{
    return kind == DataKind::Csv ? "csv" : kind == DataKind::Sav ? "sav" : "hvbf";
}

} // namespace

CombinedInputs::CombinedInputs(const CombineOptions& options, const std::vector<std::string>& tags,
                               const InterruptWatch& watch)
    : _options(options), _tags(tags)
{
    if (std::ranges::count(options.files, std::string(kStandardStream)) > 1)
        throw CommandFault(ExitStatus::Usage, "standard input is read already, by the first -");
    std::vector<DataKind> kinds;
    for (const std::string& path : options.files)
        kinds.push_back(inputKind(options.form.kind, path, {}, options.form.kindOption.c_str()));
    refuseUseless(options.form, kinds);
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        _files.push_back({fittingForm(options, options.files[i], kinds[i]), nullptr, nullptr});
        open(_files.back(), tags[i], watch);
    }
}

void CombinedInputs::open(File& file, const std::string& tag, const InterruptWatch& watch)
{
    file.served = std::make_unique<InputFile>(file.reading, FileOptions::Offered, watch);
    if (!isForEngine(file.reading, *file.served)) {
        file.served->dataset()->cases().SetName(tag);
        return;
    }
    const DataKind kind = file.served->kind();
    InputOptions direct = kind == DataKind::Csv ? file.reading : withoutTextForm(file.reading);
    // Standard input and files in other forms are read once, into a file.
    direct.path = file.served->origin().inputs.front().path;
    direct.kind = wordOfKind(kind);
    direct.direct = true;
    file.direct = std::make_unique<InputFile>(direct, FileOptions::Offered, watch);
}

CombinedInputs::~CombinedInputs() = default;

const Dataset& CombinedInputs::dataset(std::size_t input) const
{
    return *std::as_const(*_files[input].served).dataset();
}

std::string CombinedInputs::name(std::size_t input) const
{
    const std::string& path = _options.files[input];
    return path == kStandardStream ? "standard input" : path;
}

CFField::StorageType CombinedInputs::storage(std::size_t input, int column) const
{
    const CFField::StorageType served = dataset(input).storageOf(column);
    const CFField::StorageType told = dataset(input).file().Field(column).GetStorage();
    return _files[input].direct || told == CFField::Integer ? told : served;
}

bool CombinedInputs::hasValues(std::size_t input, int column) const
{
    const Dataset& data = dataset(input);
    if (data.file().CaseCount() == 0)
        return false;
    // A column without values is a text of one blank.
    if (data.source().GetVariable(column).GetType() != 1)
        return true;
    const std::unique_ptr<VEXA_InputCaseIterator> cases(
        data.source().MakeProjectedIterator({column}, nullptr));
    while (cases->NextCase() != 0)
        if (*cases->GetStringValue(0) != ' ')
            return true;
    return false;
}

JobOrigin CombinedInputs::origin() const
{
    JobOrigin origin;
    for (std::size_t i = 0; i < _files.size(); ++i) {
        origin.inputs.push_back(_files[i].served->origin().inputs.front());
        origin.inputs.back().iterator = _tags[i];
    }
    return origin;
}

std::vector<HVStatDataIterator*> CombinedInputs::rows() const
{
    std::vector<HVStatDataIterator*> rows;
    for (const File& file : _files)
        if (!file.direct)
            rows.push_back(file.served->rows());
    return rows;
}

void CombinedInputs::warnOfMissing(HostSession& session) const
{
    for (std::size_t i = 0; i < _files.size(); ++i) {
        session.introduce(*_files[i].served);
        if (_files[i].reading.userMissing.empty() && _files[i].served->declaresMissing())
            session.warn(missingIsLost(name(i)));
    }
}

void CombinedInputs::finish() const
{
    for (const File& file : _files)
        if (!file.direct)
            file.served->finish();
}

CombinedInput::CombinedInput(JNIHvlProgram& program, const CombinedInputs& inputs,
                             std::size_t input)
    : _chain(program, inputs.file(input), {}),
      _changes(std::make_unique<HVLUpdateDataModel>(&program))
{
}

CombinedInput::~CombinedInput() = default;

void CombinedInput::retype(const std::string& name, CFField::StorageType storage)
{
    _changes->Update(name, storage);
}

void CombinedInput::dropWeight(const Dataset& dataset)
{
    if (dataset.weight() >= 0)
        _changes->Update(dataset.nameOf(dataset.weight()), CFField::Input);
}

HVLFunction* CombinedInput::last()
{
    if (_changes->SizeOfUpdate() == 0)
        return _chain.last();
    _changes->AddPredFunction(_chain.last());
    return _changes.get();
}
