#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ACAVarValidSpecs.h"
#include "CFMetaData.h"
#include "VexaDataSource.h"
#include "data/HVRawDataIterator.h"
#include "support/HvintegExport.h"

/// Copies the cases of one split group to a temporary data file and feeds them to the engine from
/// there. A procedure creates one object for each group and runs its job on it.
///
///     HVSplitRawData group(source, columns, {}, false);
///     if (group.FillDataFile(*cases))
///         runner.addInputIterator(
///             group.CreateHVRawDataIter("cases", kWeightRound, true, nullptr, false));
///
/// The file has its own dictionary: the chosen variables in their order, optionally with new names
/// and measurement levels. A failure of the host's data library is shown in its output and is
/// final: every later operation fails. One thread.
class HVINTEG_EXPORT HVSplitRawData
{
public:
    /// Creates the temporary file with its dictionary. The source is borrowed. A negative entry of
    /// `variables` creates a numeric variable without values. `names` and `levels` are empty or
    /// have an entry for each variable; an empty name keeps the variable's own. `addCaseCount` adds
    /// the field $casecount to the iterator.
    HVSplitRawData(const VEXA_DataSource& source, const std::vector<int>& variables,
                   const std::vector<std::string>& names,
                   const std::vector<MeasurementLevel>& levels, bool addCaseCount);
    /// Creates the temporary file; variables keep their names. The other arguments are those of the
    /// constructor with names.
    HVSplitRawData(const VEXA_DataSource& source, const std::vector<int>& variables,
                   const std::vector<MeasurementLevel>& levels, bool addCaseCount);
    HVSplitRawData(const HVSplitRawData&) = delete;
    HVSplitRawData& operator=(const HVSplitRawData&) = delete;
    /// Deletes the iterator and removes the file.
    ~HVSplitRawData();

    /// Copies cases from the current one to the end of its group and closes the file. Returns false
    /// on failure and for a second group, which needs its own object.
    bool FillDataFile(VEXA_InputCaseIterator& cases);
    /// Adds a case that the caller has composed in the buffer case. A null case is ignored. Returns
    /// false if the file is closed or has failed.
    bool AddNewCase(const VEXA_Case* newCase);
    /// Closes the file after AddNewCase, so that it can be read. Returns false on failure.
    bool CompleteDataFile();
    /// Closes the file after AddNewCase. A failure is shown, and later operations return false.
    void CloseDataWriteFile();
    /// Closes the file for reading. An iterator over it must only be cleared afterwards.
    void CloseDataReadFile();
    /// Does nothing and returns true: CreateHVRawDataIter opens the file.
    bool OpenDataReadFile() { return true; }
    /// Does nothing and returns true: the constructor opens the file.
    bool OpenDataWriteFile() { return true; }
    /// Whether an iterator has opened the file.
    bool IsDataReadFileOpen() const;
    /// Whether the file still takes cases.
    bool IsDataWriteFileOpen() const;

    /// Opens the complete file and returns an iterator over its cases, owned by this object.
    /// Returns the same iterator until it is cleared, and null on failure. A non-null `metadata`
    /// describes the fields. `specs` is borrowed, may be null, and rules user-missing values as in
    /// HVRawDataIterator.
    HVRawDataIterator* CreateHVRawDataIter(const std::string& name, WeightAdjust adjust,
                                           const ACAVarValidSpecs* specs,
                                           const CFMetaData* metadata, bool scoreIteration);
    /// Opens the complete file and returns an iterator over its cases, with one rule for the
    /// user-missing values of all variables. Otherwise as the overload with rules per variable.
    HVRawDataIterator* CreateHVRawDataIter(const std::string& name, WeightAdjust adjust,
                                           bool excludeUserMissing, const CFMetaData* metadata,
                                           bool scoreIteration);
    /// The iterator, or null.
    HVRawDataIterator* GetHVRawDataIter() const;
    /// Deletes the iterator and closes its file; a new one may be created. Returns false after a
    /// failure.
    bool ClearHVRawDataIter();

    /// Returns the number of split variables, and their names and labels in the host's encoding.
    int GetSplitNamesAndLabels(std::vector<std::string>& names,
                               std::vector<std::string>& labels) const;
    /// The values of the split variables in this group, each in as many units as its width takes.
    /// Owned by this object.
    const std::vector<OBS*>& GetSplitValues() const;
    /// Copies the complete file to the trace directory if tracing is on. Always returns true; a
    /// failure is shown as a warning.
    bool GetSystemFile(const std::string& fileName);
    /// Number of cases in the file.
    int GetNSysFileCases() const;
    /// Number of variables in the file.
    int GetNRecVars() const;
    /// The buffer for AddNewCase, owned by this object. Null after FillDataFile.
    VEXA_Case* GetBufferCase() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
