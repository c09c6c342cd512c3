#include "Dataset.h"

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

/// The data library's sentence, with the file as the user calls it.
CommandFault inputFault(const ErrorText& error, const ReadableFile& file)
{
    std::string text = error.what();
    if (text.starts_with(file.path()))
        text.replace(0, file.path().size(), file.name());
    std::string hint;
    if (text.find("none is given") != std::string::npos)
        hint = "--password gives one";
    return {ExitStatus::Input, text, hint};
}

} // namespace

Dataset::Dataset(const InputOptions& options, const ReadableFile& file, DataKind kind,
                 const std::string& password)
    : _keepsUserMissing(options.userMissing == "keep")
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
