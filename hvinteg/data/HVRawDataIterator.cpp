#include "data/HVRawDataIterator.h"

#include <utility>

#include "data/HVRawDataIteratorImpl.h"
#include "support/Tracing.h"

void HVRawDataIterator::Impl::open(const VEXA_DataSource& source, const HVDataModel& model,
                                   const std::vector<int>& variables, ErrorMonitor* monitor)
{
    dataModel = model.getDataModel();
    metadata = model.getMetaData();
    open(source, variables, monitor);
}

void HVRawDataIterator::Impl::open(const VEXA_DataSource& source, const std::vector<int>& variables,
                                   ErrorMonitor* monitor)
{
    views.open(source, variables, monitor);
    reader.start(views.top(), metadata);
}

void HVRawDataIterator::Impl::describe(const CFMetaData& fields)
{
    metadata = fields;
    metadata.ExportXMLDoc(dataModel);
}

HVRawDataIterator::HVRawDataIterator(const HVDataModel& model, ErrorMonitor* monitor)
    : _impl(std::make_unique<Impl>())
{
    _impl->open(model.getDataSource(), model, model.getAnalysVars(), monitor);
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
    _impl->reader.rules.adjust = adjust;
    _impl->open(source, model, variables, monitor);
}

HVRawDataIterator::HVRawDataIterator(const VEXA_DataSource& source,
                                     const std::vector<std::string>& names,
                                     const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                                     WeightAdjust adjust, bool splitRole, bool fromUTF8,
                                     ErrorMonitor* monitor)
    : _impl(std::make_unique<Impl>())
{
    HVDataModel model(source, addCaseCount, adjust != kWeightNone, splitRole);
    std::vector<int> variables;
    if (!names.empty()) {
        model.UpdateAnalysMetadata(names, levels, fromUTF8);
        variables = model.getAnalysVars();
    }
    _impl->reader.rules.adjust = adjust;
    _impl->open(source, model, variables, monitor);
}

HVRawDataIterator::HVRawDataIterator(const VEXA_DataSource& source, const CFMetaData& metadata,
                                     const std::vector<int>& variables, ErrorMonitor* monitor)
    : _impl(std::make_unique<Impl>())
{
    _impl->describe(metadata);
    _impl->open(source, variables, monitor);
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
    _impl->views.keep(std::move(opened));
}

HVRawDataIterator::HVRawDataIterator(LocallyUniqueID dataset, const std::vector<std::string>& names,
                                     const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                                     WeightAdjust adjust, bool splitRole, bool fromUTF8)
{
    auto opened = std::make_shared<SvrDMInputDataSource>(dataset, false);
    HVRawDataIterator iterator(sourceOf(*opened), names, levels, addCaseCount, adjust, splitRole,
                               fromUTF8, SvrDMDataset::GetErrorMonitor());
    _impl = std::move(iterator._impl);
    _impl->views.keep(std::move(opened));
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
    return _impl->reader.nextRecord();
}

unsigned int HVRawDataIterator::getRecordValue(unsigned long long index, void*& value,
                                               unsigned long long& length)
{
    const CaseReader& reader = _impl->reader;
    if (reader.status != RecordAvailable)
        return reader.status;
    reader.slots.get(index, value, length);
    return RecordAvailable;
}

long long HVRawDataIterator::totalRecords() const
{
    return _impl->totalRecords;
}

void HVRawDataIterator::SetTotalRecords(long long records)
{
    _impl->totalRecords = records;
}

bool HVRawDataIterator::servesBlocks(const std::vector<std::size_t>& fields)
{
    return _impl->reader.servesBlocks(fields);
}

unsigned int HVRawDataIterator::nextRecords(const std::vector<std::size_t>& fields,
                                            const std::vector<double*>& columns, std::size_t most,
                                            std::size_t& count)
{
    return _impl->reader.nextRecords(fields, columns, most, count);
}

void HVRawDataIterator::dispose(JNIEnv*) {}

unsigned int HVRawDataIterator::Rewind(bool scoreIteration)
{
    _impl->scoreIteration = scoreIteration;
    return _impl->reader.rewind(_impl->views.top());
}
