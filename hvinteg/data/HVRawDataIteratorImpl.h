#pragma once

#include <string>
#include <vector>

#include "data/CaseReader.h"
#include "data/CaseViews.h"
#include "data/HVDataModel.h"
#include "data/HVRawDataIterator.h"

/// The views of the cases and the reader of the records. Field numbers refer to the top view.
struct HVINTEG_HIDDEN HVRawDataIterator::Impl
{
    /// Opens the cases of a borrowed source with the fields of a model.
    void open(const VEXA_DataSource& source, const HVDataModel& model,
              const std::vector<int>& variables, ErrorMonitor* monitor);
    /// Opens the cases with the fields that `metadata` describes.
    void open(const VEXA_DataSource& source, const std::vector<int>& variables,
              ErrorMonitor* monitor);
    /// Sets the fields and their document.
    void describe(const CFMetaData& fields);

    std::string name;
    std::string dataModel; ///< the document of the fields
    CFMetaData metadata;   ///< the fields of a record
    bool scoreIteration = false;
    long long totalRecords = -1;
    CaseViews views; ///< the reader reads from them
    CaseReader reader;
};
