#include "KnownDataset.h"

#include "Dataset.h"
#include "SvrDMDataset.h"

// The dataset outlives the scope, so the registration need not own its source.
KnownDataset::KnownDataset(const Dataset& dataset)
    : _id(SvrDMDataset::Register({&dataset.source(), [](const VEXA_DataSource*) {}}))
{
}

KnownDataset::~KnownDataset()
{
    SvrDMDataset::Unregister(_id);
}
