#include "data/HVRawDataIterator.h"

#include <algorithm>
#include <atomic>
#include <utility>

#include "MultiByte.h"
#include "VexaDataViews.h"
#include "data/HVDataModel.h"
#include "data/RecordSlots.h"
#include "support/Tracing.h"

namespace {

/// Any thread may set it. It is never cleared.
struct CancelFlag
{
    CancelFlag() = default;
    CancelFlag(const CancelFlag& other) : isSet(other.isSet.load()) {}
    CancelFlag& operator=(const CancelFlag& other)
    {
        isSet = other.isSet.load();
        return *this;
    }
    std::atomic<bool> isSet = false;
};

/// Texts need a conversion; numbers do not.
bool hasText(const VEXA_DataSource& source)
{
    for (int column = 0; column < source.ColumnCount(); ++column)
        if (source.GetVariable(column).GetType() >= 1)
            return true;
    return false;
}

} // namespace

/// The cases and their conversion to records. The requested columns become a projection. If the
/// host's encoding is not UTF-8, a converted copy lies over it. Field numbers refer to the last of
/// these views.
///
/// Only the first pass counts cases and weights and checks the weights. Rewind therefore completes
/// an unfinished first pass.
struct HVINTEG_HIDDEN HVRawDataIterator::Impl
{
    /// Takes the fields from a model or from the caller.
    void takeModel(const HVDataModel& model);
    void takeMetadata(const CFMetaData& fields);
    /// Creates the views and opens the cases, from `source`, `variables`, `metadata` and the rules.
    void init();
    void readViewAsUtf8(const VEXA_DataSource& current);
    /// Decides how to fill each field, so that records need no look-up.
    void describeFields(const VEXA_DataSource& current);
    /// Asks the stop processor. A cancelled iterator stays cancelled.
    bool isCancelled();
    /// Moves to the next case with a weight above 0.
    unsigned int nextRecord();
    /// Moves over cases that are in memory and writes the values of some fields.
    unsigned int nextRecords(const std::vector<std::size_t>& fields,
                             const std::vector<double*>& columns, std::size_t most,
                             std::size_t& count);
    /// The cases as blocks; null if the host serves them one by one.
    VEXA_CaseBlock* blocks() const { return dynamic_cast<VEXA_CaseBlock*>(cases.get()); }
    unsigned int endOfData();
    /// Completes the counts, then goes back to the first case.
    unsigned int rewind(bool score);

    const VEXA_DataSource* source = nullptr;
    std::string name;
    std::string dataModel;
    CFMetaData metadata;
    std::vector<int> variables;
    RecordRules rules;
    RecordSlots slots;
    CaseCounts counts;
    int columnCount = 0;
    ErrorMonitor* monitor = nullptr;
    bool scoreIteration = false;
    bool firstPass = true;
    unsigned int status = RecordAvailable;
    HVStopProcessor* stopProcessor = nullptr;
    CancelFlag cancelled;

    // Shared by copies. Each reads from the previous one; destruction is in reverse order.
    std::shared_ptr<SvrDMInputDataSource> dataset;
    std::shared_ptr<VEXA_CProjection> projection;
    std::shared_ptr<ErrorMonitor> ownMonitor;
    std::shared_ptr<UTF8DataSource> utf8View;
    std::shared_ptr<TempFileDataStore> temporaryStore;
    const VEXA_DataSource* view = nullptr; ///< the view that the cases are read from
    std::shared_ptr<VEXA_InputCaseIterator> cases;
};

void HVRawDataIterator::Impl::takeModel(const HVDataModel& model)
{
    dataModel = model.getDataModel();
    metadata = model.getMetaData();
}

void HVRawDataIterator::Impl::takeMetadata(const CFMetaData& fields)
{
    metadata = fields;
    metadata.ExportXMLDoc(dataModel);
}

void HVRawDataIterator::Impl::init()
{
    std::vector<int> columns;
    std::copy_if(variables.begin(), variables.end(), std::back_inserter(columns),
                 [](int column) { return column >= 0; });
    if (!columns.empty())
        projection = std::make_shared<VEXA_CProjection>(*source, columns);
    const VEXA_DataSource& current = projection ? *projection : *source;
    if (rules.adjust != kWeightNone)
        // The view's index: a projection renumbers the columns.
        rules.weightField = current.GetWeightVarIndex();
    rules.incrementValue = kSystemMissing;
    rules.trimsTabs = qUTF8mode();
    columnCount = current.ColumnCount();
    view = &current;
    if (!rules.trimsTabs && hasText(current))
        readViewAsUtf8(current);
    monitor = nullptr;
    describeFields(*view);
    slots.clear(rules.fields.size());
    cases.reset(view->MakeIterator(nullptr));
}

/// The engine reads UTF-8, possibly repeatedly. The copy is converted only once.
void HVRawDataIterator::Impl::readViewAsUtf8(const VEXA_DataSource& current)
{
    if (!monitor) {
        ownMonitor = std::make_shared<VexaErrorMonitor>(&Reporter);
        monitor = ownMonitor.get();
    }
    utf8View = std::make_shared<UTF8DataSource>(current, VEXAMBDefaultCodePage(), monitor);
    temporaryStore = std::make_shared<TempFileDataStore>(*utf8View);
    view = temporaryStore.get();
}

void HVRawDataIterator::Impl::describeFields(const VEXA_DataSource& current)
{
    rules.fields.clear();
    for (std::size_t i = 0; i < metadata.FieldCount(); ++i) {
        RecordField field;
        // The case count is the only field without a column.
        field.isCaseCount = static_cast<int>(i) >= columnCount;
        if (!field.isCaseCount) {
            field.storage = metadata.GetField(i)->GetStorage();
            field.variable = &current.GetVariable(static_cast<int>(i));
            field.hasUserMissing = field.variable->HasMissingValues();
            field.width = field.variable->GetType();
        }
        rules.fields.push_back(field);
    }
    rules.settle();
}

bool HVRawDataIterator::Impl::isCancelled()
{
    if (stopProcessor && stopProcessor->CheckCancel())
        cancelled.isSet = true;
    if (cancelled.isSet)
        status = Cancelled;
    return status == Cancelled;
}

unsigned int HVRawDataIterator::Impl::nextRecord()
{
    isCancelled();
    if (status != RecordAvailable)
        return status;
    while (cases->NextCase() != 0) {
        if (firstPass)
            ++counts.cases;
        const double weight = slots.fill(*cases, rules, firstPass ? &counts : nullptr);
        if (firstPass)
            // Also without a weight: the counts include cases that are left out.
            counts.judge(weight);
        if (weight > 0)
            return status;
    }
    return endOfData();
}

unsigned int HVRawDataIterator::Impl::endOfData()
{
    cases.reset();
    status = EndOfData;
    return status;
}

unsigned int HVRawDataIterator::Impl::nextRecords(const std::vector<std::size_t>& fields,
                                                  const std::vector<double*>& columns,
                                                  std::size_t most, std::size_t& count)
{
    count = 0;
    isCancelled();
    while (count < most && status == RecordAvailable) {
        VEXA_CaseBlock& block = *blocks();
        const std::size_t ahead = std::min(block.CasesAhead(), most - count);
        if (ahead == 0)
            return endOfData();
        std::size_t taken = 1;
        while (taken < ahead && !isCancelled())
            ++taken;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const OBS* const values = block.NumbersAhead(static_cast<int>(fields[i]));
            double* const column = columns[i] + count;
            const bool isPlain = rules.fields[fields[i]].isPlain;
            for (std::size_t row = 0; row < taken; ++row)
                column[row] =
                    isPlain ? values[row].number : rules.converted(values[row].number, fields[i]);
        }
        block.Skip(taken);
        if (firstPass)
            counts.takeUnweighted(taken);
        count += taken;
        if (count < most && taken == ahead)
            isCancelled();
    }
    return status;
}

unsigned int HVRawDataIterator::Impl::rewind(bool score)
{
    scoreIteration = score;
    isCancelled();
    if (counts.cases >= 1 && cases) {
        if (firstPass)
            while (nextRecord() == RecordAvailable && !cancelled.isSet) {
            }
        cases.reset();
    }
    if (status == Cancelled)
        return status;
    if (!cases) {
        // The texts of the last record were released with the cases. If the cases cannot be read
        // again, the iterator stays at its end.
        slots.clear(rules.fields.size());
        status = EndOfData;
        cases.reset(view->MakeIterator(nullptr));
        firstPass = false;
    }
    status = RecordAvailable;
    return status;
}

HVRawDataIterator::HVRawDataIterator(const HVDataModel& model, ErrorMonitor* monitor)
    : _impl(std::make_unique<Impl>())
{
    _impl->source = &model.getDataSource();
    _impl->takeModel(model);
    _impl->variables = model.getAnalysVars();
    _impl->monitor = monitor;
    _impl->init();
}

HVRawDataIterator::HVRawDataIterator(const VEXA_DataSource& source,
                                     const std::vector<int>& variables,
                                     const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                                     WeightAdjust adjust, bool splitRole, ErrorMonitor* monitor)
    : _impl(std::make_unique<Impl>())
{
    HVDataModel model(source, addCaseCount, adjust != kWeightNone, splitRole);
    if (!variables.empty())
        model.UpdateAnalysMetadata(variables, levels);
    _impl->source = &source;
    _impl->takeModel(model);
    _impl->variables = variables;
    _impl->rules.adjust = adjust;
    _impl->monitor = monitor;
    _impl->init();
}

HVRawDataIterator::HVRawDataIterator(const VEXA_DataSource& source,
                                     const std::vector<std::string>& names,
                                     const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                                     WeightAdjust adjust, bool splitRole, bool fromUTF8,
                                     ErrorMonitor* monitor)
    : _impl(std::make_unique<Impl>())
{
    HVDataModel model(source, addCaseCount, adjust != kWeightNone, splitRole);
    if (!names.empty()) {
        model.UpdateAnalysMetadata(names, levels, fromUTF8);
        _impl->variables = model.getAnalysVars();
    }
    _impl->source = &source;
    _impl->takeModel(model);
    _impl->rules.adjust = adjust;
    _impl->monitor = monitor;
    _impl->init();
}

HVRawDataIterator::HVRawDataIterator(const VEXA_DataSource& source, const CFMetaData& metadata,
                                     const std::vector<int>& variables, ErrorMonitor* monitor)
    : _impl(std::make_unique<Impl>())
{
    _impl->source = &source;
    _impl->takeMetadata(metadata);
    _impl->variables = variables;
    _impl->monitor = monitor;
    _impl->init();
}

namespace {

/// The dataset returns its source only by operator->.
const VEXA_DataSource& sourceOf(const SvrDMInputDataSource& dataset)
{
    return *dataset.operator->();
}

} // namespace

HVRawDataIterator::HVRawDataIterator(LocallyUniqueID dataset, const std::vector<int>& variables,
                                     const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                                     WeightAdjust adjust, bool splitRole)
{
    auto opened = std::make_shared<SvrDMInputDataSource>(dataset, false);
    HVRawDataIterator iterator(sourceOf(*opened), variables, levels, addCaseCount, adjust,
                               splitRole, SvrDMDataset::GetErrorMonitor());
    _impl = std::move(iterator._impl);
    _impl->dataset = std::move(opened);
}

HVRawDataIterator::HVRawDataIterator(LocallyUniqueID dataset, const std::vector<std::string>& names,
                                     const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                                     WeightAdjust adjust, bool splitRole, bool fromUTF8)
{
    auto opened = std::make_shared<SvrDMInputDataSource>(dataset, false);
    HVRawDataIterator iterator(sourceOf(*opened), names, levels, addCaseCount, adjust, splitRole,
                               fromUTF8, SvrDMDataset::GetErrorMonitor());
    _impl = std::move(iterator._impl);
    _impl->dataset = std::move(opened);
}

HVRawDataIterator::HVRawDataIterator(const HVRawDataIterator& other)
    : HVStatDataIterator(other), _impl(std::make_unique<Impl>(*other._impl))
{
}

HVRawDataIterator& HVRawDataIterator::operator=(const HVRawDataIterator& other)
{
    if (this != &other)
        _impl = std::make_unique<Impl>(*other._impl);
    return *this;
}

HVRawDataIterator::~HVRawDataIterator() = default;

std::string HVRawDataIterator::getName()
{
    return _impl->name;
}

std::string HVRawDataIterator::getDataModel()
{
    traceXMLFile(_impl->dataModel, "InputDataModel", _impl->name);
    return _impl->dataModel;
}

unsigned int HVRawDataIterator::nextRecord()
{
    return _impl->nextRecord();
}

unsigned int HVRawDataIterator::getRecordValue(unsigned long long index, void*& value,
                                               unsigned long long& length)
{
    if (_impl->status != RecordAvailable)
        return _impl->status;
    _impl->slots.get(index, value, length);
    return RecordAvailable;
}

bool HVRawDataIterator::servesBlocks(const std::vector<std::size_t>& fields)
{
    const Impl& impl = *_impl;
    return impl.rules.weightField < 0 && impl.blocks() != nullptr &&
           std::all_of(fields.begin(), fields.end(),
                       [&impl](std::size_t field) { return impl.rules.isIndependent(field); });
}

unsigned int HVRawDataIterator::nextRecords(const std::vector<std::size_t>& fields,
                                            const std::vector<double*>& columns, std::size_t most,
                                            std::size_t& count)
{
    return _impl->nextRecords(fields, columns, most, count);
}

void HVRawDataIterator::dispose(JNIEnv*) {}

unsigned int HVRawDataIterator::Rewind(bool scoreIteration)
{
    return _impl->rewind(scoreIteration);
}

void HVRawDataIterator::SetName(const std::string& name)
{
    _impl->name = name;
}

void HVRawDataIterator::SetExcludeUserMissing(bool exclude)
{
    _impl->rules.excludeUserMissing = exclude;
}

void HVRawDataIterator::SetVarValidSpecs(const ACAVarValidSpecs* specs)
{
    _impl->rules.validSpecs = specs;
}

void HVRawDataIterator::SetScoreIteration(bool score)
{
    _impl->scoreIteration = score;
}

void HVRawDataIterator::SetStopProcessor(HVStopProcessor* processor)
{
    _impl->stopProcessor = processor;
}

void HVRawDataIterator::SetFreqWeightAdj(WeightAdjust adjust)
{
    // The data model states whether there is a weight, so only its rounding may change.
    if (_impl->rules.adjust != kWeightNone && adjust != kWeightNone)
        _impl->rules.adjust = adjust;
}

void HVRawDataIterator::SetVariableIncrement(int target, int source, double value)
{
    _impl->rules.incrementTarget = target;
    _impl->rules.incrementSource = source;
    _impl->rules.incrementValue = value;
    _impl->rules.settle();
}

void HVRawDataIterator::SetCancelStatus()
{
    _impl->cancelled.isSet = true;
}

void HVRawDataIterator::UpdateUserMissing()
{
    // Excluded everywhere: every field keeps its declared missing values.
    if (_impl->rules.excludeUserMissing && !_impl->rules.validSpecs)
        return;
    CFMetaData updated;
    for (std::size_t i = 0; i < _impl->metadata.FieldCount(); ++i) {
        CFField field = *_impl->metadata.GetField(i);
        const int place = static_cast<int>(i);
        if (place < _impl->columnCount && !_impl->rules.isExcluded(place))
            field.SetMissingValues(CFMissingValues());
        updated.AppendField(field);
    }
    _impl->takeMetadata(updated);
}

bool HVRawDataIterator::GetExcludeUserMissing() const
{
    return _impl->rules.excludeUserMissing;
}

WeightAdjust HVRawDataIterator::GetFreqWeightAdj() const
{
    return _impl->rules.adjust;
}

bool HVRawDataIterator::GetScoreIteration() const
{
    return _impl->scoreIteration;
}

HVStopProcessor* HVRawDataIterator::GetStopProcessor() const
{
    return _impl->stopProcessor;
}

const ACAVarValidSpecs* HVRawDataIterator::GetVarValidSpecs() const
{
    return _impl->rules.validSpecs;
}

VEXA_InputCaseIterator* HVRawDataIterator::GetStatDSIter() const
{
    return _impl->cases.get();
}

bool HVRawDataIterator::GetCancelStatus() const
{
    return _impl->cancelled.isSet;
}

const CFMetaData& HVRawDataIterator::getMetaData() const
{
    return _impl->metadata;
}

int HVRawDataIterator::GetIncrTargetVarInd() const
{
    return _impl->rules.incrementTarget;
}

int HVRawDataIterator::GetIncrSourceVarInd() const
{
    return _impl->rules.incrementSource;
}

double HVRawDataIterator::GetIncrVarValue() const
{
    return _impl->rules.incrementValue;
}

int HVRawDataIterator::GetNCases() const
{
    return _impl->counts.cases;
}

int HVRawDataIterator::GetNValidCases() const
{
    return _impl->counts.valid;
}

int HVRawDataIterator::GetNInvalidCases() const
{
    return _impl->counts.invalid;
}

double HVRawDataIterator::GetWeightNCases() const
{
    return _impl->counts.weightOfCases;
}

double HVRawDataIterator::GetWeightNValidCases() const
{
    return _impl->counts.weightOfValid;
}

double HVRawDataIterator::GetWeightNInvalidCases() const
{
    return _impl->counts.weightOfInvalid;
}

bool HVRawDataIterator::AreAllWeightsGood() const
{
    return _impl->counts.allWeightsGood;
}

bool HVRawDataIterator::AreAllWeightsIntegers() const
{
    return _impl->counts.allWeightsIntegers;
}
