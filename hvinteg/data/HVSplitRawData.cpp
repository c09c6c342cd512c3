#include "data/HVSplitRawData.h"

#include "TnOutput.h"
#include "data/GroupFile.h"
#include "support/Files.h"
#include "support/HVStatTracer.h"
#include "support/Paths.h"
#include "support/Tracing.h"

namespace {

constexpr const char* kCopyFailed = "Cannot write system file.";

} // namespace

/// The file of one group, its iterator and the values of its split variables. Exceptions of the
/// host's data library mark the file as failed; later operations then do nothing.
struct HVINTEG_HIDDEN HVSplitRawData::Impl
{
    Impl(const VEXA_DataSource& dataSource, const std::vector<int>& variables,
         const std::vector<std::string>& names, const std::vector<MeasurementLevel>& levels,
         bool withCaseCount)
        : source(dataSource), isSplitFile(dataSource.GetNSplitVars() != 0),
          addCaseCount(withCaseCount), file(dataSource, variables, names, levels)
    {
    }

    /// Keeps the split values of the group's first case. A source without splits has none.
    void keepSplitValues(const VEXA_InputCaseIterator& cases);
    void copyGroup(VEXA_InputCaseIterator& cases);
    /// Creates the iterator; null if there is one already, and on failure.
    HVRawDataIterator* createIterator(const std::string& name, WeightAdjust adjust,
                                      const CFMetaData* metadata);
    std::unique_ptr<HVRawDataIterator> iteratorOver(const VEXA_DataSource& cases,
                                                    WeightAdjust adjust,
                                                    const CFMetaData* metadata) const;

    const VEXA_DataSource& source;
    bool isSplitFile;
    bool addCaseCount;
    GroupFile file;
    std::unique_ptr<HVRawDataIterator> iterator; ///< reads from the file
    std::vector<std::vector<OBS>> splitBuffers;
    std::vector<OBS*> splitValues;
};

void HVSplitRawData::Impl::keepSplitValues(const VEXA_InputCaseIterator& cases)
{
    const auto count = static_cast<std::size_t>(source.GetNSplitVars());
    if (!isSplitFile || splitBuffers.size() == count)
        return;
    splitBuffers.clear();
    splitValues.clear();
    for (std::size_t i = 0; i < count; ++i) {
        const int column = source.GetSplitVarIndex(static_cast<int>(i));
        const OBS* value = cases.GetObsPointer(column);
        const std::size_t units = unitsOfWidth(source.GetVariable(column).GetType());
        splitBuffers.emplace_back(value, value + units);
    }
    for (std::vector<OBS>& buffer : splitBuffers)
        splitValues.push_back(buffer.data());
}

void HVSplitRawData::Impl::copyGroup(VEXA_InputCaseIterator& cases)
{
    try {
        keepSplitValues(cases);
        file.copyGroup(cases);
    } catch (const ErrorText& error) {
        file.fail(error, kLevelWarning);
    }
}

std::unique_ptr<HVRawDataIterator>
HVSplitRawData::Impl::iteratorOver(const VEXA_DataSource& cases, WeightAdjust adjust,
                                   const CFMetaData* metadata) const
{
    const std::vector<int> all;
    if (!metadata)
        return std::make_unique<HVRawDataIterator>(cases, all, std::vector<MeasurementLevel>(),
                                                   addCaseCount, adjust, false, nullptr);
    auto made = std::make_unique<HVRawDataIterator>(cases, *metadata, all, nullptr);
    // Has an effect only if the given metadata has a weight.
    made->SetFreqWeightAdj(adjust);
    return made;
}

HVRawDataIterator* HVSplitRawData::Impl::createIterator(const std::string& name,
                                                        WeightAdjust adjust,
                                                        const CFMetaData* metadata)
{
    if (iterator || file.hasFailed() || !file.isComplete())
        return nullptr;
    const VEXA_DataSource* cases = file.openReader();
    if (!cases)
        return nullptr;
    try {
        iterator = iteratorOver(*cases, adjust, metadata);
    } catch (const ErrorText& error) {
        file.fail(error, kLevelError);
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

HVSplitRawData::~HVSplitRawData() = default;

bool HVSplitRawData::FillDataFile(VEXA_InputCaseIterator& cases)
{
    GroupFile& file = _impl->file;
    if (!file.hasFailed()) {
        // A closed file accepts no second group.
        if (!file.takesCases())
            return false;
        _impl->copyGroup(cases);
    }
    file.releaseBuffer();
    return file.complete();
}

bool HVSplitRawData::AddNewCase(const VEXA_Case* newCase)
{
    GroupFile& file = _impl->file;
    if (newCase && !file.hasFailed()) {
        if (!file.takesCases())
            return false;
        try {
            file.addCase(*newCase);
        } catch (const ErrorText& error) {
            file.fail(error, kLevelWarning);
        }
    }
    return !file.hasFailed();
}

bool HVSplitRawData::CompleteDataFile()
{
    return _impl->file.complete();
}

void HVSplitRawData::CloseDataWriteFile()
{
    _impl->file.complete();
}

void HVSplitRawData::CloseDataReadFile()
{
    _impl->file.closeReader();
}

bool HVSplitRawData::IsDataReadFileOpen() const
{
    return _impl->file.isOpenForReading();
}

bool HVSplitRawData::IsDataWriteFileOpen() const
{
    return _impl->file.takesCases();
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
    _impl->file.closeReader();
    return !_impl->file.hasFailed();
}

int HVSplitRawData::GetSplitNamesAndLabels(std::vector<std::string>& names,
                                           std::vector<std::string>& labels) const
{
    const int count = _impl->source.GetNSplitVars();
    names.assign(static_cast<std::size_t>(count), {});
    labels.assign(static_cast<std::size_t>(count), {});
    for (int i = 0; i < count; ++i) {
        const auto place = static_cast<std::size_t>(i);
        const VEXA_Variable& variable =
            _impl->source.GetVariable(_impl->source.GetSplitVarIndex(i));
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
    if (tracer->canTrace() && _impl->file.isComplete() && !_impl->file.isOpenForReading()) {
        const std::string target = JoinFilePath(tracer->traceDir(), fileName);
        if (!StatCopyFile(target, _impl->file.name()))
            TnError(TnUTF8String(kCopyFailed), kShowInOutput, kLevelWarning);
    }
    return true;
}

int HVSplitRawData::GetNSysFileCases() const
{
    return _impl->file.caseCount();
}

int HVSplitRawData::GetNRecVars() const
{
    return _impl->file.variableCount();
}

VEXA_Case* HVSplitRawData::GetBufferCase() const
{
    return _impl->file.bufferCase();
}
