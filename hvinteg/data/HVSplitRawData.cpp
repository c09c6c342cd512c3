#include "data/HVSplitRawData.h"

#include <utility>

#include "ErrorText.h"
#include "ExtNameStr.h"
#include "FileServices.h"
#include "TnOutput.h"
#include "UserCaseFile.h"
#include "support/Files.h"
#include "support/HVStatTracer.h"
#include "support/Paths.h"
#include "support/Tracing.h"

namespace {

constexpr const char* kTempPrefix = "hvadatafile_";
/// Prefix for the names of variables without values.
constexpr const char* kEmptyName = "empty_";
constexpr const char* kCopyFailed = "Cannot write system file.";

void show(const std::string& text, int level)
{
    TnError(TnUTF8String(text), kShowInOutput, level);
}

} // namespace

/// The file of one group. The constructor creates the variables and commits the dictionary; then
/// cases are written, the file is closed, and an iterator reads it. Exceptions of the host's data
/// library call `fail`; later operations then do nothing.
struct HVINTEG_HIDDEN HVSplitRawData::Impl
{
    /// State of the writing. Values above LastUsable have failed.
    enum State
    {
        Idle = 0,
        Writing = 1,
        LastUsable = 2,
        Failed = 4
    };

    Impl(const VEXA_DataSource& dataSource, std::vector<int> columns,
         std::vector<std::string> newNames, std::vector<MeasurementLevel> newLevels,
         bool withCaseCount);

    /// Opens the file for writing, with its dictionary.
    bool InitDataFile();
    /// Creates the stored variables, in the order of `variables`.
    void makeVariables();
    void nameEmptyVariables(const std::vector<VEXA_Variable*>& made) const;
    /// Marks the file as failed and shows the error.
    void fail(const ErrorText& error, int level);
    /// Keeps the split values of the group's first case. A source without splits has none.
    void keepSplitValues(const VEXA_InputCaseIterator& cases);
    /// Copies the current case into the buffer.
    void composeCase(const VEXA_InputCaseIterator& cases);
    void addCase(const VEXA_Case& newCase);
    /// Copies from the current case to the end of its group. Cases without groups are one group.
    void copyGroup(VEXA_InputCaseIterator& cases);
    /// Gives the file its final name, so that it can be read.
    void closeWriteFile();
    void closeReadFile();
    /// Opens the complete file as a data source.
    bool openReadFile();
    HVRawDataIterator* createIterator(const std::string& name, WeightAdjust adjust,
                                      const CFMetaData* metadata);

    const VEXA_DataSource* source;
    std::vector<int> variables;
    std::vector<std::string> names;
    std::vector<MeasurementLevel> levels;
    int weightColumn = -1;
    bool isSplitFile;
    bool addCaseCount;
    std::string dataFileName;
    std::unique_ptr<UserCaseFileSpec> writeSpec;
    std::unique_ptr<UserOutputCaseFile> outputFile;
    IndependentDataStore* store = nullptr; ///< owned by the output file; null after it is closed
    std::unique_ptr<UserCaseFileSpec> readSpec;
    std::unique_ptr<UserInputCaseFile> inputFile;
    const VEXA_DataSource* readSource = nullptr;
    bool complete = false;
    int caseCount = 0;
    std::vector<int> widths; ///< of the stored variables
    std::vector<OBS> caseBuffer;
    std::unique_ptr<VEXA_Case> bufferCase;
    std::unique_ptr<HVRawDataIterator> iterator;
    std::vector<std::vector<OBS>> splitBuffers;
    std::vector<OBS*> splitValues;
    int state = Idle;
};

HVSplitRawData::Impl::Impl(const VEXA_DataSource& dataSource, std::vector<int> columns,
                           std::vector<std::string> newNames,
                           std::vector<MeasurementLevel> newLevels, bool withCaseCount)
    : source(&dataSource), variables(std::move(columns)), names(std::move(newNames)),
      levels(std::move(newLevels)), isSplitFile(dataSource.GetNSplitVars() != 0),
      addCaseCount(withCaseCount)
{
    try {
        InitDataFile();
    } catch (const ErrorText& error) {
        fail(error, kLevelError);
    }
}

void HVSplitRawData::Impl::fail(const ErrorText& error, int level)
{
    state = Failed;
    show(error.what(), level);
}

bool HVSplitRawData::Impl::InitDataFile()
{
    dataFileName = FormTempName(kTempPrefix);
    writeSpec = std::make_unique<UserCaseFileSpec>();
    writeSpec->Init(dataFileName, true, true);
    outputFile = std::make_unique<UserOutputCaseFile>(*writeSpec);
    store = outputFile->DataSource();
    if (!store) {
        state = Failed;
        return false;
    }
    makeVariables();
    if (weightColumn >= 0)
        store->SetWeightVar(weightColumn);
    store->CommitDictionary();
    caseBuffer.resize(static_cast<std::size_t>(store->GetObsAreaSize()));
    bufferCase = std::make_unique<VEXA_Case>(store, caseBuffer.data());
    state = Writing;
    return true;
}

void HVSplitRawData::Impl::makeVariables()
{
    const int weight = source->GetWeightVarIndex();
    std::vector<VEXA_Variable*> allMade;
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const bool isEmpty = variables[i] < 0;
        VEXA_Variable variable = isEmpty ? VEXA_Variable(0) : source->GetVariable(variables[i]);
        if (!isEmpty && variables[i] == weight)
            weightColumn = static_cast<int>(i);
        if (!levels.empty())
            variable.SetMeasurementLevel(levels[i]);
        if (!names.empty() && !names[i].empty())
            variable.SetName(names[i]);
        VEXA_Variable* made = store->MakeVariable(variable);
        if (!names.empty())
            // A renamed variable is another variable and must not keep the id of the source's.
            made->NewID();
        widths.push_back(variable.GetType());
        allMade.push_back(made);
    }
    nameEmptyVariables(allMade);
}

/// A file requires names that are not empty and not repeated.
void HVSplitRawData::Impl::nameEmptyVariables(const std::vector<VEXA_Variable*>& made) const
{
    int number = 0;
    for (VEXA_Variable* variable : made) {
        if (!variable->GetName().empty())
            continue;
        std::string name;
        do
            name = kEmptyName + std::to_string(++number);
        while (store->FindVarIndex(name, 0) >= 0);
        variable->SetName(name);
    }
}

void HVSplitRawData::Impl::keepSplitValues(const VEXA_InputCaseIterator& cases)
{
    const auto count = static_cast<std::size_t>(source->GetNSplitVars());
    if (!isSplitFile || splitBuffers.size() == count)
        return;
    splitBuffers.clear();
    splitValues.clear();
    for (std::size_t i = 0; i < count; ++i) {
        const int column = source->GetSplitVarIndex(static_cast<int>(i));
        const OBS* value = cases.GetObsPointer(column);
        const std::size_t units = unitsOfWidth(source->GetVariable(column).GetType());
        splitBuffers.emplace_back(value, value + units);
    }
    for (std::vector<OBS>& buffer : splitBuffers)
        splitValues.push_back(buffer.data());
}

void HVSplitRawData::Impl::composeCase(const VEXA_InputCaseIterator& cases)
{
    for (std::size_t i = 0; i < variables.size(); ++i) {
        const int place = static_cast<int>(i);
        if (variables[i] < 0)
            bufferCase->SetNumericValue(place, kSystemMissing);
        else if (widths[i] > 0)
            bufferCase->SetStringValue(place, cases.GetStringValue(variables[i]), widths[i]);
        else
            bufferCase->SetNumericValue(place, cases.GetNumericValue(variables[i]));
    }
}

void HVSplitRawData::Impl::addCase(const VEXA_Case& newCase)
{
    store->AddCase(newCase);
    ++caseCount;
}

void HVSplitRawData::Impl::copyGroup(VEXA_InputCaseIterator& cases)
{
    const auto* groups = dynamic_cast<const ProcDSIterator*>(&cases);
    try {
        keepSplitValues(cases);
        while (!(groups && groups->SplitGroupEnd())) {
            composeCase(cases);
            addCase(*bufferCase);
            if (cases.NextCase() == 0)
                break;
        }
    } catch (const ErrorText& error) {
        fail(error, kLevelWarning);
    }
}

void HVSplitRawData::Impl::closeWriteFile()
{
    complete = false;
    if (state > LastUsable) {
        state = Failed;
        return;
    }
    try {
        if (store)
            store->Close();
        store = nullptr;
        outputFile.reset();
        writeSpec.reset();
        complete = true;
        state = Idle;
    } catch (const ErrorText& error) {
        fail(error, kLevelError);
    }
}

void HVSplitRawData::Impl::closeReadFile()
{
    readSource = nullptr;
    inputFile.reset();
    readSpec.reset();
}

bool HVSplitRawData::Impl::openReadFile()
{
    try {
        readSpec = std::make_unique<UserCaseFileSpec>();
        readSpec->Init(dataFileName, true, false);
        inputFile = std::make_unique<UserInputCaseFile>(*readSpec, nullptr);
        readSource = inputFile->DataSource();
        state = readSource ? Idle : Failed;
    } catch (const ErrorText& error) {
        fail(error, kLevelError);
    }
    return state == Idle;
}

HVRawDataIterator* HVSplitRawData::Impl::createIterator(const std::string& name,
                                                        WeightAdjust adjust,
                                                        const CFMetaData* metadata)
{
    if (iterator || state == Failed || !complete || !openReadFile())
        return nullptr;
    try {
        if (metadata) {
            iterator = std::make_unique<HVRawDataIterator>(*readSource, *metadata,
                                                           std::vector<int>(), nullptr);
            // Has an effect only if the given metadata has a weight.
            iterator->SetFreqWeightAdj(adjust);
        } else {
            iterator = std::make_unique<HVRawDataIterator>(*readSource, std::vector<int>(),
                                                           std::vector<MeasurementLevel>(),
                                                           addCaseCount, adjust, false, nullptr);
        }
    } catch (const ErrorText& error) {
        fail(error, kLevelError);
        return nullptr;
    }
    iterator->SetName(name);
    return iterator.get();
}

HVSplitRawData::HVSplitRawData(const VEXA_DataSource& source, const std::vector<int>& variables,
                               const std::vector<std::string>& names,
                               const std::vector<MeasurementLevel>& levels, bool addCaseCount)
    : _impl(std::make_unique<Impl>(source, variables, names, levels, addCaseCount))
{
}

HVSplitRawData::HVSplitRawData(const VEXA_DataSource& source, const std::vector<int>& variables,
                               const std::vector<MeasurementLevel>& levels, bool addCaseCount)
    : HVSplitRawData(source, variables, {}, levels, addCaseCount)
{
}

HVSplitRawData::~HVSplitRawData()
{
    _impl->iterator.reset();
    _impl->closeReadFile();
    _impl->outputFile.reset();
    if (!_impl->dataFileName.empty()) {
        ExtNameStr name;
        name.SetGeneric(_impl->dataFileName);
        ExtNameStr::remove(name);
    }
}

bool HVSplitRawData::FillDataFile(VEXA_InputCaseIterator& cases)
{
    if (_impl->state != Impl::Failed) {
        // A closed file accepts no second group.
        if (!_impl->store)
            return false;
        _impl->copyGroup(cases);
    }
    _impl->bufferCase.reset();
    _impl->caseBuffer = {};
    if (_impl->state == Impl::Failed)
        return false;
    _impl->closeWriteFile();
    return _impl->complete && _impl->state == Impl::Idle;
}

bool HVSplitRawData::AddNewCase(const VEXA_Case* newCase)
{
    if (newCase && _impl->state != Impl::Failed) {
        if (!_impl->store)
            return false;
        try {
            _impl->addCase(*newCase);
        } catch (const ErrorText& error) {
            _impl->fail(error, kLevelWarning);
        }
    }
    return _impl->state != Impl::Failed;
}

bool HVSplitRawData::CompleteDataFile()
{
    _impl->closeWriteFile();
    return _impl->complete && _impl->state == Impl::Idle;
}

void HVSplitRawData::CloseDataWriteFile()
{
    _impl->closeWriteFile();
}

void HVSplitRawData::CloseDataReadFile()
{
    _impl->closeReadFile();
}

bool HVSplitRawData::IsDataReadFileOpen() const
{
    return _impl->readSource != nullptr;
}

bool HVSplitRawData::IsDataWriteFileOpen() const
{
    return _impl->store != nullptr;
}

HVRawDataIterator* HVSplitRawData::CreateHVRawDataIter(const std::string& name, WeightAdjust adjust,
                                                       const ACAVarValidSpecs* specs,
                                                       const CFMetaData* metadata,
                                                       bool scoreIteration)
{
    if (HVRawDataIterator* made = _impl->createIterator(name, adjust, metadata)) {
        made->SetVarValidSpecs(specs);
        made->SetScoreIteration(scoreIteration);
    }
    return _impl->iterator.get();
}

HVRawDataIterator* HVSplitRawData::CreateHVRawDataIter(const std::string& name, WeightAdjust adjust,
                                                       bool excludeUserMissing,
                                                       const CFMetaData* metadata,
                                                       bool scoreIteration)
{
    if (HVRawDataIterator* made = _impl->createIterator(name, adjust, metadata)) {
        made->SetExcludeUserMissing(excludeUserMissing);
        made->SetScoreIteration(scoreIteration);
    }
    return _impl->iterator.get();
}

HVRawDataIterator* HVSplitRawData::GetHVRawDataIter() const
{
    return _impl->iterator.get();
}

bool HVSplitRawData::ClearHVRawDataIter()
{
    _impl->iterator.reset();
    _impl->closeReadFile();
    if (_impl->state == Impl::Failed)
        return false;
    _impl->state = Impl::Idle;
    return true;
}

int HVSplitRawData::GetSplitNamesAndLabels(std::vector<std::string>& names,
                                           std::vector<std::string>& labels) const
{
    const int count = _impl->source->GetNSplitVars();
    names.assign(static_cast<std::size_t>(count), {});
    labels.assign(static_cast<std::size_t>(count), {});
    for (int i = 0; i < count; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const VEXA_Variable& variable =
            _impl->source->GetVariable(_impl->source->GetSplitVarIndex(i));
        names[place] = variable.GetName();
        if (const char* label = variable.GetLabel())
            labels[place] = label;
    }
    return count;
}

const std::vector<OBS*>& HVSplitRawData::GetSplitValues() const
{
    return _impl->splitValues;
}

bool HVSplitRawData::GetSystemFile(const std::string& fileName)
{
    HVStatTracer* tracer = HVTracer();
    if (tracer->canTrace() && _impl->complete && !_impl->readSource) {
        const std::string target = JoinFilePath(tracer->traceDir(), fileName);
        if (!StatCopyFile(target, _impl->dataFileName))
            show(kCopyFailed, kLevelWarning);
    }
    return true;
}

int HVSplitRawData::GetNSysFileCases() const
{
    return _impl->caseCount;
}

int HVSplitRawData::GetNRecVars() const
{
    return static_cast<int>(_impl->variables.size());
}

VEXA_Case* HVSplitRawData::GetBufferCase() const
{
    return _impl->bufferCase.get();
}
