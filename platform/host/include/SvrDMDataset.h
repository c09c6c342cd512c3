#pragma once

#include <cstdint>
#include <memory>

#include "HostExport.h"
#include "VexaDataSource.h"

/// The host's id of an open dataset.
using LocallyUniqueID = std::uint32_t;
inline constexpr LocallyUniqueID kNoDataset = 0xFFFFFFFFU;

/// The datasets that are open in the host. Any thread.
class HOST_API SvrDMDataset
{
public:
    /// Makes a dataset known; the id is new and never kNoDataset.
    static LocallyUniqueID Register(std::shared_ptr<const VEXA_DataSource> dataset);
    /// False if there is no such dataset. Who reads it may finish.
    static bool Unregister(LocallyUniqueID id);
    /// The monitor of all datasets, which puts its reports into the output. Lives as long as the
    /// process.
    static ErrorMonitor* GetErrorMonitor();
};

/// A dataset that is opened for reading by its id.
class HOST_API SvrDMInputDataSource
{
public:
    /// `exclusive`: nobody else may have it open meanwhile. Throws ErrorText if there is no such
    /// dataset, or somebody has it.
    SvrDMInputDataSource(LocallyUniqueID id, bool exclusive);
    ~SvrDMInputDataSource();
    SvrDMInputDataSource(const SvrDMInputDataSource&) = delete;
    SvrDMInputDataSource& operator=(const SvrDMInputDataSource&) = delete;

    /// Lives as long as this object.
    const VEXA_DataSource* operator->() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
