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

/// The name of a group, for example "sex = 1 (male)".
std::string nameOf(const std::vector<GroupKey>& key);

/// A split group.
struct CaseGroup
{
    std::vector<GroupKey> key;            ///< empty for a dataset without a split
    std::vector<std::string> shownValues; ///< of the split variables, as the host shows them
    long long cases = 0;
};

/// The cases of a dataset, with its weight, for jobs that read them one after the other: the cases
/// of some split groups, in the order of the split variables' values, or all cases as one group.
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

    /// The data of a procedure that works on the groups.
    ProcedureDataSource& procedureData() { return _active; }
    /// Returns the cases of the next groups and ends the previous ones; null at the end. A job
    /// reads as many groups as it can describe with little memory. Throws CommandFault and
    /// ErrorText.
    HVRawDataIterator* next();
    /// The groups whose cases `next` returned, at least one.
    const std::vector<CaseGroup>& groups() const { return _groups; }
    /// The field with the number of each case's group, from 1. Empty if there is only one group.
    std::string numberField() const { return _groups.size() > 1 ? _numberName : ""; }
    /// Makes a group of `groups` the one whose values the procedure's data have.
    void show(const CaseGroup& group) { _active.SetSplitValues(group.shownValues); }
    /// The part of all cases that jobs have got, from 0 to 1.
    double partServed() const;

private:
    bool isSplit() const { return _sorted != nullptr; }
    void sort(const std::vector<int>& columns, const InterruptWatch& watch);
    void describe(const std::vector<int>& columns);
    std::vector<int> activeColumns() const;
    int placeOf(int column) const;
    void nameNumber();
    HVRawDataIterator* allCases();
    HVRawDataIterator* nextGroups();
    void makeFile();
    bool beginGroup();
    bool hasRoom() const;
    void addGroup();
    void addCase(const std::vector<int>& columns);
    std::vector<GroupKey> readKey() const;

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
    std::unique_ptr<HVSplitRawData> _file; ///< the cases of `_groups`
    std::unique_ptr<HVRawDataIterator> _all;
    std::string _numberName;
    std::vector<CaseGroup> _groups;
    long long _served = 0; ///< cases
};
