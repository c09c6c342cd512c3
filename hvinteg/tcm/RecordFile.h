#pragma once

#include "data/HVSimpleContainer.h"

/// Records that one job writes for the next, HVBF, and their data model: two temporary files, which
/// the destructor removes.
struct RecordFile
{
    RecordFile(const char* recordsName, const char* modelName)
        : records(recordsName, ""), model(modelName, "")
    {
    }

    HVSimpleContainer records;
    HVSimpleContainer model;
};
