#include "hvhost/input/KnownDataset.h"

#include "SvrDMDataset.h"
#include "hvhost/input/Dataset.h"

// The dataset outlives the scope, so the registration need not own its source.
KnownDataset::KnownDataset(const Dataset& dataset)
    : _id(SvrDMDataset::Register({&dataset.source(), [](const VEXA_DataSource*) {}}))
{
}

KnownDataset::~KnownDataset()
{
    SvrDMDataset::Unregister(_id);
}
