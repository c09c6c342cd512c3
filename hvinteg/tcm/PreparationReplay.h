#pragma once

#include <memory>
#include <string>
#include <vector>

#include "SvrDMDataset.h"
#include "data/HVRawDataIterator.h"
#include "tcm/RecordFile.h"
#include "tcm/TsdpSettings.h"

/// A model's data preparation, run again on a dataset: what it is run on, and what its jobs leave
/// for the job that wanted the data. It goes after the executions that know its rows and files. The
/// path and the dimension fields are the caller's.
struct PreparationReplay
{
    LocallyUniqueID dataset;
    const std::string& modelPath;
    const std::vector<std::string>& dimFields;

    TsdpSettings settings = {};
    std::unique_ptr<HVRawDataIterator> rows = nullptr;
    RecordFile described{"inputdatamodel", "inputdata"};
    RecordFile converted{"convertdatamodel", "convertdata"};
    RecordFile prepared{"datamodel", "data"};
    HVSimpleContainer output{"JSON", ""};
};
