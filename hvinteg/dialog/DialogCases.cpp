#include "dialog/DialogCases.h"

#include <utility>

#include "ErrorText.h"

namespace {

/// Returns null if the file has no data source. Throws ErrorText.
std::unique_ptr<UserInputCaseFile> openFile(const std::string& path)
{
    UserCaseFileSpec spec;
    spec.Init(path, true, false);
    auto file = std::make_unique<UserInputCaseFile>(spec, nullptr);
    return file->DataSource() != nullptr ? std::move(file) : nullptr;
}

} // namespace

std::unique_ptr<DialogCases> DialogCases::open(const DialogChoice& choice, const char* name,
                                               std::string& reason)
{
    try {
        std::unique_ptr<UserInputCaseFile> file;
        if (choice.dataset == kNoDataset) {
            file = openFile(choice.path);
            if (file == nullptr)
                return nullptr;
        }
        return std::make_unique<DialogCases>(std::move(file), choice, name);
    } catch (const ErrorText& error) {
        reason = error.what();
        return nullptr;
    }
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
