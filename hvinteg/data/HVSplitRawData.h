#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ACAVarValidSpecs.h"
#include "CFMetaData.h"
#include "VexaDataSource.h"
#include "data/HVRawDataIterator.h"
#include "support/HvintegExport.h"

/// The cases of one split group, copied into a temporary data file and served to the engine from
/// there: a procedure makes one of these for each group, and runs its job on it.
///
///     HVSplitRawData group(source, columns, {}, false);
///     if (group.FillDataFile(*cases))
///         runner.addInputIterator(
///             group.CreateHVRawDataIter("cases", kWeightRound, true, nullptr, false));
///
/// The file has a dictionary of its own: the chosen variables, in their order, under new names and
/// with new measurement levels where these are given. A failure of the host's data library is shown
/// in its output and ends everything: from then on each operation reports failure. One thread.
class HVINTEG_EXPORT HVSplitRawData
{
public:
    /// The source is borrowed. A negative entry of `variables` makes a numeric variable without
    /// values. `names` and `levels` are empty, or have an entry for each variable; an empty name
    /// leaves a variable its own.
    HVSplitRawData(const VEXA_DataSource& source, const std::vector<int>& variables,
                   const std::vector<std::string>& names,
                   const std::vector<MeasurementLevel>& levels, bool addCaseCount);
    HVSplitRawData(const VEXA_DataSource& source, const std::vector<int>& variables,
                   const std::vector<MeasurementLevel>& levels, bool addCaseCount);
    HVSplitRawData(const HVSplitRawData&) = delete;
    HVSplitRawData& operator=(const HVSplitRawData&) = delete;
    /// Removes the file.
    ~HVSplitRawData();

    /// Copies cases from the present one on, to the end of the group, and closes the file. False
    /// for a second group too, which takes an object of its own.
    bool FillDataFile(VEXA_InputCaseIterator& cases);
    /// For a caller that composes cases itself, in the buffer case: adds one; then CompleteDataFile
    /// closes the file.
    bool AddNewCase(const VEXA_Case* newCase);
    bool CompleteDataFile();
    void CloseDataWriteFile();
    /// An iterator over the file must not be used any more, but may be cleared.
    void CloseDataReadFile();
    bool OpenDataReadFile() { return true; }
    bool OpenDataWriteFile() { return true; }
    bool IsDataReadFileOpen() const;
    bool IsDataWriteFileOpen() const;

    /// The cases of the file, which must be closed; the iterator stays this object's, and is the
    /// same until it is cleared. Null on failure. With `metadata` its fields describe them. `specs`
    /// is borrowed.
    HVRawDataIterator* CreateHVRawDataIter(const std::string& name, WeightAdjust adjust,
                                           const ACAVarValidSpecs* specs,
                                           const CFMetaData* metadata, bool scoreIteration);
    HVRawDataIterator* CreateHVRawDataIter(const std::string& name, WeightAdjust adjust,
                                           bool excludeUserMissing, const CFMetaData* metadata,
                                           bool scoreIteration);
    /// Null if there is none.
    HVRawDataIterator* GetHVRawDataIter() const;
    /// Deletes the iterator and closes the file that it read; another one may be created.
    bool ClearHVRawDataIter();

    /// Names and labels of the split variables, in the host's encoding; how many there are.
    int GetSplitNamesAndLabels(std::vector<std::string>& names,
                               std::vector<std::string>& labels) const;
    /// The values of the split variables in this group, each in as many units as it takes.
    const std::vector<OBS*>& GetSplitValues() const;
    /// Copies the file to the trace directory, if tracing is on. Always true.
    bool GetSystemFile(const std::string& fileName);
    int GetNSysFileCases() const;
    int GetNRecVars() const;
    /// Null once the file is filled.
    VEXA_Case* GetBufferCase() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
