#include "Dataset.h"

#include <string_view>
#include <utility>

#include "CommandFault.h"
#include "ErrorText.h"
#include "ReadableFile.h"
#include "hvl/HVLUpdateDataModel.h"
#include "support/Paths.h"
#include "support/Transcoding.h"

namespace {

constexpr const char* kIteratorName = "cases";

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

/// What may be done, by a phrase of what is wrong.
constexpr std::pair<std::string_view, const char*> kHints[] = {
    {"and none is given", "--password-file FILE or --password WORD gives it"},
    {": this is not a", "--from csv, sav or hvbf tells what it is, whatever its name says"},
    {": the record has", "--max-errors N skips up to N bad records, and says how many there were"},
    {"the encoding", "for example --encoding windows-1252"},
    {"the file is no text", "--encoding names the encoding that it is in"},
};

std::string hintFor(std::string_view text)
{
    for (const auto& [phrase, hint] : kHints)
        if (text.find(phrase) != std::string_view::npos)
            return hint;
    return {};
}

/// The data library's sentence, with the file as the user calls it.
CommandFault inputFault(const ErrorText& error, const ReadableFile& file)
{
    std::string text = error.what();
    if (text.starts_with(file.path()))
        text.replace(0, file.path().size(), file.name());
    return {ExitStatus::Input, text, hintFor(text)};
}

} // namespace

Dataset::Dataset(const InputOptions& options, const ReadableFile& file, DataKind kind,
                 const std::string& password)
    : _preload(std::async(std::launch::async, PreloadCaseFiles)),
      _keepsUserMissing(options.userMissing == "keep")
{
    UserCaseFileSpec spec;
    spec.Init(FormalizeFilePath(file.path(), false), true, false);
    spec.SetKind(caseFileKind(kind));
    spec.SetPassword(password);
    spec.SetHeader(!options.noHeader);
    spec.SetCodePage(options.encoding);
    try {
        _file = std::make_unique<UserInputCaseFile>(spec, nullptr);
    } catch (const ErrorText& error) {
        throw inputFault(error, file);
    }
}

Dataset::~Dataset() = default;

HVRawDataIterator& Dataset::cases()
{
    if (!_cases) {
        _cases = std::make_unique<HVRawDataIterator>(source(), std::vector<int>(),
                                                     std::vector<MeasurementLevel>(), false,
                                                     kWeightNone, false, nullptr);
        _cases->SetName(kIteratorName);
        if (_keepsUserMissing) {
            _cases->SetExcludeUserMissing(false);
            _cases->UpdateUserMissing();
        }
    }
    return *_cases;
}

bool Dataset::complete(HVLUpdateDataModel& update) const
{
    const auto nameOf = [this](int column) {
        return transcodeToUTF8(source().GetVariable(column).GetName().c_str(), nullptr);
    };
    for (int column = 0; column < source().ColumnCount(); ++column)
        if (_file->IsInteger(column))
            update.Update(nameOf(column), CFField::Integer);
    if (source().GetWeightVarIndex() >= 0)
        update.Update(nameOf(source().GetWeightVarIndex()), CFField::FrequencyWeight);
    for (int i = 0; i < source().GetNSplitVars(); ++i)
        update.Update(nameOf(source().GetSplitVarIndex(i)), CFField::Split);
    return update.SizeOfUpdate() > 0;
}
