#pragma once

#include <cstdint>
#include <memory>

#include "HostExport.h"
#include "VexaDataSource.h"

/// The host's id of a registered dataset.
using LocallyUniqueID = std::uint32_t;
inline constexpr LocallyUniqueID kNoDataset = 0xFFFFFFFFU;

/// The registry of the host's open datasets. Any thread.
class HOST_API SvrDMDataset
{
public:
    /// Registers a dataset and returns its new id, which is never kNoDataset.
    static LocallyUniqueID Register(std::shared_ptr<const VEXA_DataSource> dataset);
    /// Removes a dataset. Objects that read it may continue. Returns false if there is no such
    /// dataset.
    static bool Unregister(LocallyUniqueID id);
    /// The monitor of all datasets, which writes its reports to the output. Owned by the host;
    /// lives until the process ends.
    static ErrorMonitor* GetErrorMonitor();
};

/// A registered dataset that is open for reading.
class HOST_API SvrDMInputDataSource
{
public:
    /// Opens the dataset with this id. `exclusive`: nobody else may open it meanwhile. Throws
    /// ErrorText if there is no such dataset, or if another reader prevents it.
    SvrDMInputDataSource(LocallyUniqueID id, bool exclusive);
    /// Closes the dataset.
    ~SvrDMInputDataSource();
    SvrDMInputDataSource(const SvrDMInputDataSource&) = delete;
    SvrDMInputDataSource& operator=(const SvrDMInputDataSource&) = delete;

    /// The dataset. Valid as long as this object.
    const VEXA_DataSource* operator->() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
