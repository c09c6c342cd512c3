#include "geo/DialogCases.h"

#include <utility>

#include "ErrorText.h"

namespace {

/// Null, with or without a reason, if there is no data source.
std::unique_ptr<UserInputCaseFile> openFile(const std::string& path, std::string& reason)
{
    UserCaseFileSpec spec;
    spec.Init(path, true, false);
    try {
        auto file = std::make_unique<UserInputCaseFile>(spec, nullptr);
        return file->DataSource() != nullptr ? std::move(file) : nullptr;
    } catch (const ErrorText& error) {
        reason = error.what();
        return nullptr;
    }
}

} // namespace

std::unique_ptr<DialogCases> DialogCases::open(const DialogChoice& choice, const char* name,
                                               std::string& reason)
{
    std::unique_ptr<UserInputCaseFile> file;
    if (choice.dataset == kNoDataset) {
        file = openFile(choice.path, reason);
        if (file == nullptr)
            return nullptr;
    }
    return std::make_unique<DialogCases>(std::move(file), choice, name);
}

DialogCases::DialogCases(std::unique_ptr<UserInputCaseFile> file, const DialogChoice& choice,
                         const char* name)
    : _file(std::move(file))
{
    if (_file != nullptr)
        _rows = std::make_unique<HVRawDataIterator>(*_file->DataSource(), choice.variables,
                                                    choice.levels, false, kWeightRound, false,
                                                    false, nullptr);
    else
        _rows = std::make_unique<HVRawDataIterator>(choice.dataset, choice.variables, choice.levels,
                                                    false, kWeightRound, false, false);
    _rows->SetName(name);
}
