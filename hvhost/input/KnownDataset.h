#pragma once

#include <cstdint>

class Dataset;

/// Registers a dataset with the host under an id during its lifetime.
class KnownDataset
{
public:
    explicit KnownDataset(const Dataset& dataset);
    ~KnownDataset();
    KnownDataset(const KnownDataset&) = delete;
    KnownDataset& operator=(const KnownDataset&) = delete;

    std::uint32_t id() const { return _id; }

private:
    std::uint32_t _id;
};
