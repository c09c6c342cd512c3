#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ACAVarValidSpecs.h"
#include "CFMetaData.h"
#include "VexaDataViews.h"
#include "WatchedSource.h"

class Dataset;
class HVRawDataIterator;
class HVSplitRawData;
class InterruptWatch;

/// A split variable's value in one group.
struct GroupKey
{
    std::string variable;
    std::optional<std::string> value; ///< nothing for a missing number
    CFField::StorageType storage = CFField::String;
    std::string label; ///< empty if the value has none
};

/// The cases of a dataset, weighted as the dataset says, as jobs read them one after the other: the
/// cases of each split group, in the order of the split variables' values, or all cases in one
/// group. Categories that are declared missing are served as values that the data model declares
/// missing, so that a job can tell them apart. Dataset and watch are borrowed and outlive the
/// groups.
class CaseGroups
{
public:
    /// `columns` are the variables that jobs need beside the weight.
    CaseGroups(const Dataset& dataset, std::vector<int> columns, const InterruptWatch& watch);
    ~CaseGroups();
    CaseGroups(const CaseGroups&) = delete;
    CaseGroups& operator=(const CaseGroups&) = delete;

    /// The data of a procedure that works on the groups; it knows the one that is read.
    ProcedureDataSource& procedureData() { return _active; }
    /// The cases of the next group, which end the ones before; null at the end. Throws CommandFault
    /// and ErrorText.
    HVRawDataIterator* next();
    /// Which group it is; nothing for a dataset without a split.
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
    std::vector<int> _columns; ///< of the dataset, for the jobs
    std::vector<CFField::StorageType> _keyStorages;
    CFMetaData _fields; ///< of the columns, as jobs know them
    ACAVarValidSpecs _validSpecs;
    WatchedSource _source;
    // With a split only; each reads from the one before it.
    std::unique_ptr<VEXA_CProjection> _chosen;
    std::unique_ptr<TempFileDataStore> _sorted;
    std::unique_ptr<WatchedSource> _watchedSorted;
    ProcedureDataSource _active;
    std::unique_ptr<VEXA_InputCaseIterator> _walk;
    std::unique_ptr<HVSplitRawData> _group;
    std::unique_ptr<HVRawDataIterator> _all;
    std::vector<GroupKey> _key;
};
