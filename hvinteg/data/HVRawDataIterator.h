#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "ACAVarValidSpecs.h"
#include "CFMetaData.h"
#include "RowBlocks.h"
#include "RowTotal.h"
#include "SvrDMDataset.h"
#include "VexaDataSource.h"
#include "data/WeightAdjust.h"
#include "runner/HVStatDataIterator.h"
#include "runner/HVStopProcessor.h"
#include "support/HvintegExport.h"

class HVDataModel;

/// Feeds the host's cases to the engine, one record for each case with a positive weight. A record
/// holds the analysis variables in their order. Dates are converted to the engine's scale, and
/// user-missing values become missing. The first pass over the cases counts them.
///
///     HVRawDataIterator cases(dataset, std::vector<std::string>{"age", "sex"}, {}, false,
///                             kWeightRound, false, true);
///     cases.SetName("cases");
///     runner.prepareHVLJob(text);   // reads "cases"
///     runner.addInputIterator(&cases);
///
/// The caller names the iterator and passes it to HVRunner::addInputIterator. The caller keeps
/// ownership; the iterator must live until HVRunner::cleanExecution. The engine reads it on one
/// thread at a time. Only SetCancelStatus may be called from other threads. Copies share the cases
/// that are being read and may be destroyed independently. What the host's data library throws is
/// passed on.
///
/// If the host has its cases in memory (VEXA_CaseBlock), numbers without a weight and an increment
/// are served in blocks. Nothing else changes.
class HVINTEG_EXPORT HVRawDataIterator : public HVStatDataIterator,
                                         public EmbeddedHV::RowBlocks,
                                         public EmbeddedHV::RowTotal
{
public:
    /// Reads the variables of a model, with rounded weights. The model's source must outlive the
    /// iterator; the model may be destroyed. `monitor` is told about bytes that are invalid in the
    /// host's encoding; null prints them to the output. It is borrowed.
    HVRawDataIterator(const HVDataModel& model, ErrorMonitor* monitor);
    /// Reads variables of a source by column; an empty list means all. `levels` are as in
    /// HVDataModel::UpdateAnalysMetadata. `addCaseCount` adds the field $casecount. `splitRole`
    /// marks split variables. Source and monitor are borrowed.
    HVRawDataIterator(const VEXA_DataSource& source, const std::vector<int>& variables,
                      const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                      WeightAdjust adjust, bool splitRole, ErrorMonitor* monitor);
    /// Reads variables of a source by name, in UTF-8 if `fromUTF8`, otherwise in the host's
    /// encoding. An empty list means all. The other arguments are those of the constructor by
    /// column.
    HVRawDataIterator(const VEXA_DataSource& source, const std::vector<std::string>& names,
                      const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                      WeightAdjust adjust, bool splitRole, bool fromUTF8, ErrorMonitor* monitor);
    /// Reads variables whose fields the caller describes, one field for each variable, with rounded
    /// weights. An empty list of variables means all.
    HVRawDataIterator(const VEXA_DataSource& source, const CFMetaData& metadata,
                      const std::vector<int>& variables, ErrorMonitor* monitor);
    /// Opens a dataset of the host and reads variables of it by column. The dataset stays open
    /// until the iterator and its copies are destroyed.
    HVRawDataIterator(LocallyUniqueID dataset, const std::vector<int>& variables,
                      const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                      WeightAdjust adjust, bool splitRole);
    /// Opens a dataset of the host and reads variables of it by name, in UTF-8 if `fromUTF8`,
    /// otherwise in the host's encoding. The dataset stays open until the iterator and its copies
    /// are destroyed.
    HVRawDataIterator(LocallyUniqueID dataset, const std::vector<std::string>& names,
                      const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                      WeightAdjust adjust, bool splitRole, bool fromUTF8);
    /// Copies the settings and the counts, and shares the cases that are being read.
    HVRawDataIterator(const HVRawDataIterator& other);
    /// Drops the cases and settings, and shares those of `other`.
    HVRawDataIterator& operator=(const HVRawDataIterator& other);

    /// The name from SetName.
    std::string getName() override;
    /// The description of the fields (XML, UTF-8). Also writes it to the trace.
    std::string getDataModel() override;
    /// Moves to the next case with a positive weight. Returns the status: record available, end of
    /// data or cancelled.
    unsigned int nextRecord() override;
    /// Returns a value of the current record through `value` and `length`; null and 0 if it is
    /// missing. The value stays valid until the next record. `index` must be below the number of
    /// fields.
    unsigned int getRecordValue(unsigned long long index, void*& value,
                                unsigned long long& length) override;
    /// Does nothing: the caller owns the iterator.
    void dispose(JNIEnv* env) override;
    ~HVRawDataIterator() override;
    /// Goes back to the first case. A first pass that is not finished is first completed, for the
    /// counts. Returns the status as nextRecord does; a cancelled iterator stays cancelled. If the
    /// source throws because it cannot be read again, the iterator is at its end, and a later
    /// Rewind may retry.
    virtual unsigned int Rewind(bool scoreIteration);
    /// Whether nextRecords can serve these fields. Changes nothing.
    bool servesBlocks(const std::vector<std::size_t>& fields) override;
    /// See RowBlocks. Asks the stop processor for each record, as nextRecord does, and stays at the
    /// record at which it was cancelled.
    unsigned int nextRecords(const std::vector<std::size_t>& fields,
                             const std::vector<double*>& columns, std::size_t most,
                             std::size_t& count) override;

    /// The number of SetTotalRecords.
    long long totalRecords() const override;

    /// Sets how many records there will be, if the caller knows it, for the progress of a job. -1,
    /// the default, means unknown. A wrong number does no harm.
    void SetTotalRecords(long long records);
    /// Sets the name by which the job text refers to the rows. Set it before the job text is
    /// generated.
    void SetName(const std::string& name);
    /// Whether user-missing values of all variables become missing. Ignored while SetVarValidSpecs
    /// has set rules.
    void SetExcludeUserMissing(bool exclude);
    /// Sets whether user-missing values become missing for each variable; a variable without a rule
    /// keeps its user-missing values. Null removes the rules. Borrowed.
    void SetVarValidSpecs(const ACAVarValidSpecs* specs);
    /// Sets the mark that GetScoreIteration returns. It has no effect on the records.
    void SetScoreIteration(bool score);
    /// Sets the processor that can stop the reading; null for none. Borrowed.
    void SetStopProcessor(HVStopProcessor* processor);
    /// Changes how weights are adjusted. Ignored if the present or the new value is kWeightNone:
    /// that choice is fixed at construction.
    void SetFreqWeightAdj(WeightAdjust adjust);
    /// Changes the field `target` in each record, if it is a Real. source < 0 or source > target:
    /// set to `value`. source == target: add `value`. 0 <= source < target: field `source` plus
    /// `value`.
    void SetVariableIncrement(int target, int source, double value);
    /// Cancels the iterator permanently. Any thread.
    void SetCancelStatus();
    /// Removes from the data model the missing values of fields whose user-missing values are
    /// passed to the engine as numbers.
    void UpdateUserMissing();

    /// The value of SetExcludeUserMissing; true at first.
    bool GetExcludeUserMissing() const;
    /// The adjustment in force.
    WeightAdjust GetFreqWeightAdj() const;
    /// The mark of SetScoreIteration or the last Rewind.
    bool GetScoreIteration() const;
    /// The borrowed stop processor, or null.
    HVStopProcessor* GetStopProcessor() const;
    /// The borrowed rules of SetVarValidSpecs, or null.
    const ACAVarValidSpecs* GetVarValidSpecs() const;
    /// The host's iterator over the cases; null at their end. Owned by this object and its copies.
    VEXA_InputCaseIterator* GetStatDSIter() const;
    /// Whether the iterator is cancelled. Any thread.
    bool GetCancelStatus() const;
    /// The fields of a record. Valid until UpdateUserMissing.
    const CFMetaData& getMetaData() const;
    /// The target of SetVariableIncrement; -1 for none.
    int GetIncrTargetVarInd() const;
    /// The source of SetVariableIncrement; -1 for none.
    int GetIncrSourceVarInd() const;
    /// The value of SetVariableIncrement; system-missing for none.
    double GetIncrVarValue() const;
    /// The number of cases that the first pass has read.
    int GetNCases() const;
    /// The number of cases of the first pass with a positive weight.
    int GetNValidCases() const;
    /// The number of cases of the first pass without a positive weight.
    int GetNInvalidCases() const;
    /// The sum of the weights of all cases of the first pass.
    double GetWeightNCases() const;
    /// The sum of the weights of the cases with a positive weight.
    double GetWeightNValidCases() const;
    /// Always 0: a case without a positive weight adds no weight.
    double GetWeightNInvalidCases() const;
    /// Whether every positive weight was still positive after rounding. Known after a first pass
    /// with rounded weights.
    bool AreAllWeightsGood() const;
    /// Whether every positive weight was a whole number. Known after a first pass with rounded
    /// weights.
    bool AreAllWeightsIntegers() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
