#include "SvrDMDataset.h"

#include <map>
#include <mutex>
#include <string>

#include "ErrorText.h"

namespace {

struct OpenDataset
{
    std::shared_ptr<const VEXA_DataSource> source;
    int readers = 0;
    bool exclusive = false;
};

struct Registry
{
    std::mutex mutex;
    std::map<LocallyUniqueID, OpenDataset> datasets;
    LocallyUniqueID last = 0;
};

Registry& registry()
{
    static Registry instance;
    return instance;
}

} // namespace

LocallyUniqueID SvrDMDataset::Register(std::shared_ptr<const VEXA_DataSource> dataset)
{
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    do
        ++all.last;
    // Ids may wrap around, and one of them means no dataset.
    while (all.last == kNoDataset || all.datasets.contains(all.last));
    all.datasets[all.last].source = std::move(dataset);
    return all.last;
}

bool SvrDMDataset::Unregister(LocallyUniqueID id)
{
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    return all.datasets.erase(id) > 0;
}

ErrorMonitor* SvrDMDataset::GetErrorMonitor()
{
    // Never destroyed, because its count is read until the end.
    static VexaErrorMonitor* const monitor =
        std::make_unique<VexaErrorMonitor>(&Reporter).release();
    return monitor;
}

struct SvrDMInputDataSource::Impl
{
    LocallyUniqueID id;
    std::shared_ptr<const VEXA_DataSource> source;
};

SvrDMInputDataSource::SvrDMInputDataSource(LocallyUniqueID id, bool exclusive)
    : _impl(std::make_unique<Impl>())
{
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    const auto found = all.datasets.find(id);
    if (found == all.datasets.end())
        throw ErrorText("there is no open dataset with the id " + std::to_string(id));
    OpenDataset& dataset = found->second;
    if (dataset.exclusive || (exclusive && dataset.readers > 0))
        throw ErrorText("the dataset with the id " + std::to_string(id) + " is in use");
    ++dataset.readers;
    dataset.exclusive = exclusive;
    *_impl = {id, dataset.source};
}

SvrDMInputDataSource::~SvrDMInputDataSource()
{
    Registry& all = registry();
    const std::lock_guard lock(all.mutex);
    const auto found = all.datasets.find(_impl->id);
    // The dataset may be removed, and its id reused.
    if (found == all.datasets.end() || found->second.source != _impl->source)
        return;
    --found->second.readers;
    found->second.exclusive = false;
}

const VEXA_DataSource* SvrDMInputDataSource::operator->() const
{
    return _impl->source.get();
}
