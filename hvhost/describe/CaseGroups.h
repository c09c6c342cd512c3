#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ACAVarValidSpecs.h"
#include "CFMetaData.h"
#include "VexaDataViews.h"
#include "hvhost/input/WatchedSource.h"

class Dataset;
class HVRawDataIterator;
class HVSplitRawData;
class InterruptWatch;

/// The value of a split variable in one group.
struct GroupKey
{
    std::string variable;
    std::optional<std::string> value; ///< empty for a missing number
    CFField::StorageType storage = CFField::String;
    std::string label; ///< empty if the value has none
};

/// The cases of a dataset, with its weight, for jobs that read them one after the other: the cases
/// of each split group, in the order of the split variables' values, or all cases as one group.
/// Categories that are declared missing are served as values, and the data model declares them
/// missing, so that a job can distinguish them. Borrows the dataset and the watch, which must
/// outlive the groups.
class CaseGroups
{
public:
    /// `columns` are the variables that jobs need in addition to the weight.
    CaseGroups(const Dataset& dataset, std::vector<int> columns, const InterruptWatch& watch);
    ~CaseGroups();
    CaseGroups(const CaseGroups&) = delete;
    CaseGroups& operator=(const CaseGroups&) = delete;

    /// The data of a procedure that works on the groups. It knows the current group.
    ProcedureDataSource& procedureData() { return _active; }
    /// Returns the cases of the next group and ends the previous ones; null at the end. Throws
    /// CommandFault and ErrorText.
    HVRawDataIterator* next();
    /// The key of the current group; empty for a dataset without a split.
    const std::vector<GroupKey>& key() const { return _key; }

private:
    bool isSplit() const { return _sorted != nullptr; }
    void sort(const std::vector<int>& columns, const InterruptWatch& watch);
    void describe(const std::vector<int>& columns);
    std::vector<int> activeColumns() const;
    int placeOf(int column) const;
    HVRawDataIterator* allCases();
    HVRawDataIterator* nextGroup();
    bool beginGroup();
    void readKey();

    const Dataset& _dataset;
    std::vector<int> _columns; ///< columns of the dataset that the jobs get
    std::vector<CFField::StorageType> _keyStorages;
    CFMetaData _fields; ///< the fields of the columns, for jobs
    ACAVarValidSpecs _validSpecs;
    WatchedSource _source;
    // Only with a split. Each reads from the previous one.
    std::unique_ptr<VEXA_CProjection> _chosen;
    std::unique_ptr<TempFileDataStore> _sorted;
    std::unique_ptr<WatchedSource> _watchedSorted;
    ProcedureDataSource _active;
    std::unique_ptr<VEXA_InputCaseIterator> _walk;
    std::unique_ptr<HVSplitRawData> _group;
    std::unique_ptr<HVRawDataIterator> _all;
    std::vector<GroupKey> _key;
};
