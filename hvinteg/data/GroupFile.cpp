#include "data/GroupFile.h"

#include <cstdio>
#include <utility>

#include "ExtNameStr.h"
#include "FileServices.h"
#include "TnOutput.h"

namespace {

constexpr const char* kTempPrefix = "hvadatafile_";
/// Prefix for the names of variables without values.
constexpr const char* kEmptyName = "empty_";

} // namespace

GroupFile::GroupFile(const VEXA_DataSource& source, std::vector<int> variables,
                     const std::vector<std::string>& names,
                     const std::vector<MeasurementLevel>& levels)
    : _source(source), _variables(std::move(variables))
{
    try {
        create(names, levels);
    } catch (const ErrorText& error) {
        fail(error, kLevelError);
    }
}

GroupFile::~GroupFile()
{
    closeReader();
    _outputFile.reset();
    if (!_nativeName.empty())
        std::remove(_nativeName.c_str());
}

void GroupFile::fail(const ErrorText& error, int level)
{
    _hasFailed = true;
    TnError(TnUTF8String(error.what()), kShowInOutput, level);
}

void GroupFile::create(const std::vector<std::string>& names,
                       const std::vector<MeasurementLevel>& levels)
{
    _name = FormTempName(kTempPrefix);
    _nativeName = ExtNameStr(_name).GetNative();
    _writeSpec.Init(_name, true, true);
    _outputFile = std::make_unique<UserOutputCaseFile>(_writeSpec);
    _store = _outputFile->DataSource();
    if (!_store) {
        _hasFailed = true;
        return;
    }
    makeVariables(names, levels);
    _store->CommitDictionary();
    _caseBuffer.resize(static_cast<std::size_t>(_store->GetObsAreaSize()));
    _bufferCase = std::make_unique<VEXA_Case>(_store, _caseBuffer.data());
}

/// In the order of `_variables`.
void GroupFile::makeVariables(const std::vector<std::string>& names,
                              const std::vector<MeasurementLevel>& levels)
{
    const int weight = _source.GetWeightVarIndex();
    int weightColumn = -1;
    std::vector<VEXA_Variable*> allMade;
    for (std::size_t i = 0; i < _variables.size(); ++i) {
        const bool isEmpty = _variables[i] < 0;
        VEXA_Variable variable = isEmpty ? VEXA_Variable(0) : _source.GetVariable(_variables[i]);
        if (!isEmpty && _variables[i] == weight)
            weightColumn = static_cast<int>(i);
        if (!levels.empty())
            variable.SetMeasurementLevel(levels[i]);
        if (!names.empty() && !names[i].empty())
            variable.SetName(names[i]);
        VEXA_Variable* made = _store->MakeVariable(variable);
        if (!names.empty())
            // A renamed variable is another variable and must not keep the id of the source's.
            made->NewID();
        _widths.push_back(variable.GetType());
        allMade.push_back(made);
    }
    nameEmptyVariables(allMade);
    if (weightColumn >= 0)
        _store->SetWeightVar(weightColumn);
}

/// A file requires names that are not empty and not repeated.
void GroupFile::nameEmptyVariables(const std::vector<VEXA_Variable*>& made) const
{
    int number = 0;
    for (VEXA_Variable* variable : made) {
        if (!variable->GetName().empty())
            continue;
        std::string name;
        do
            name = kEmptyName + std::to_string(++number);
        while (_store->FindVarIndex(name, 0) >= 0);
        variable->SetName(name);
    }
}

/// Copies the current case into the buffer.
void GroupFile::composeCase(const VEXA_InputCaseIterator& cases)
{
    for (std::size_t i = 0; i < _variables.size(); ++i) {
        const int place = static_cast<int>(i);
        if (_variables[i] < 0)
            _bufferCase->SetNumericValue(place, kSystemMissing);
        else if (_widths[i] > 0)
            _bufferCase->SetStringValue(place, cases.GetStringValue(_variables[i]), _widths[i]);
        else
            _bufferCase->SetNumericValue(place, cases.GetNumericValue(_variables[i]));
    }
}

void GroupFile::addCase(const VEXA_Case& newCase)
{
    _store->AddCase(newCase);
    ++_caseCount;
}

void GroupFile::copyGroup(VEXA_InputCaseIterator& cases)
{
    const auto* groups = dynamic_cast<const ProcDSIterator*>(&cases);
    while (!(groups && groups->SplitGroupEnd())) {
        composeCase(cases);
        addCase(*_bufferCase);
        if (cases.NextCase() == 0)
            break;
    }
}

void GroupFile::releaseBuffer()
{
    _bufferCase.reset();
    _caseBuffer = {};
}

bool GroupFile::complete()
{
    _isComplete = false;
    if (_hasFailed)
        return false;
    try {
        if (_store)
            _store->Close();
        _store = nullptr;
        _outputFile.reset();
        _isComplete = true;
    } catch (const ErrorText& error) {
        fail(error, kLevelError);
    }
    return _isComplete;
}

const VEXA_DataSource* GroupFile::openReader()
{
    closeReader();
    try {
        _readSpec.Init(_name, true, false);
        _inputFile = std::make_unique<UserInputCaseFile>(_readSpec, nullptr);
        _readSource = _inputFile->DataSource();
        _hasFailed = _readSource == nullptr;
    } catch (const ErrorText& error) {
        fail(error, kLevelError);
    }
    return _readSource;
}

void GroupFile::closeReader()
{
    _readSource = nullptr;
    _inputFile.reset();
}
