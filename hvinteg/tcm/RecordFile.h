#pragma once

#include "data/HVSimpleContainer.h"

/// Records that one job leaves for the next, HVBF, with their data model: two temporary files,
/// which go with the object.
struct RecordFile
{
    RecordFile(const char* recordsName, const char* modelName)
        : records(recordsName, ""), model(modelName, "")
    {
    }

    HVSimpleContainer records;
    HVSimpleContainer model;
};
