#pragma once

#include <memory>
#include <string>
#include <vector>

#include "SvrDMDataset.h"
#include "data/HVRawDataIterator.h"
#include "tcm/RecordFile.h"
#include "tcm/TsdpSettings.h"

/// The input of a replay of a model's data preparation, and the files that its jobs write. Must be
/// destroyed after the executions that use its rows and files. The path and the dimension fields
/// are borrowed.
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
