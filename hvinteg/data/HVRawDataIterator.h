#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "ACAVarValidSpecs.h"
#include "CFMetaData.h"
#include "SvrDMDataset.h"
#include "VexaDataSource.h"
#include "runner/HVStatDataIterator.h"
#include "runner/HVStopProcessor.h"
#include "support/HvintegExport.h"

class HVDataModel;

/// What becomes of a positive case weight.
enum WeightAdjust : std::int32_t
{
    kWeightRound = 0,
    kWeightTruncate = 1,
    kWeightUnchanged = 2,
    kWeightNone = 3 ///< no weighting at all
};

/// Serves the host's cases to the engine, a record for each case with a positive weight: the
/// analysis variables, in their order, with dates on the engine's scale and user-missing values
/// taken out. The first pass over the cases counts them.
///
///     HVRawDataIterator cases(dataset, std::vector<std::string>{"age", "sex"}, {}, false,
///                             kWeightRound, false, true);
///     cases.SetName("cases");
///     runner.prepareHVLJob(text);   // reads "cases"
///     runner.addInputIterator(&cases);
///
/// Built, named, and handed to HVRunner::addInputIterator; it stays the caller's and lives until
/// HVRunner::cleanExecution. The engine pulls it on one thread at a time. Only SetCancelStatus, and
/// the stop processor, come from elsewhere. Copies share the cases that are being read; each may be
/// destroyed by itself. What the host's data library throws passes.
class HVINTEG_EXPORT HVRawDataIterator : public HVStatDataIterator
{
public:
    /// The fields and variables of a model, rounded weights. The model's source must outlive the
    /// iterator, the model need not. The monitor hears of texts that are none in the host's
    /// encoding; null stands for lines in the output. It is borrowed.
    HVRawDataIterator(const HVDataModel& model, ErrorMonitor* monitor);
    /// The variables of a source, by column or by name, with levels as in
    /// HVDataModel::UpdateAnalysMetadata; none stands for all of them. `addCaseCount` adds the
    /// field $casecount.
    HVRawDataIterator(const VEXA_DataSource& source, const std::vector<int>& variables,
                      const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                      WeightAdjust adjust, bool splitRole, ErrorMonitor* monitor);
    HVRawDataIterator(const VEXA_DataSource& source, const std::vector<std::string>& names,
                      const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                      WeightAdjust adjust, bool splitRole, bool fromUTF8, ErrorMonitor* monitor);
    /// Fields that were described elsewhere, one for each of the variables, rounded weights.
    HVRawDataIterator(const VEXA_DataSource& source, const CFMetaData& metadata,
                      const std::vector<int>& variables, ErrorMonitor* monitor);
    /// A dataset of the host, which stays open as long as the iterator.
    HVRawDataIterator(LocallyUniqueID dataset, const std::vector<int>& variables,
                      const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                      WeightAdjust adjust, bool splitRole);
    HVRawDataIterator(LocallyUniqueID dataset, const std::vector<std::string>& names,
                      const std::vector<MeasurementLevel>& levels, bool addCaseCount,
                      WeightAdjust adjust, bool splitRole, bool fromUTF8);
    HVRawDataIterator(const HVRawDataIterator& other);
    HVRawDataIterator& operator=(const HVRawDataIterator& other);

    std::string getName() override;
    /// Traced before it is given away.
    std::string getDataModel() override;
    unsigned int nextRecord() override;
    unsigned int getRecordValue(unsigned long long index, void*& value,
                                unsigned long long& length) override;
    /// Nothing: the owner deletes the iterator.
    void dispose(JNIEnv* env) override;
    ~HVRawDataIterator() override;
    /// Back to the first case. In the first pass, the cases that are left are counted before. The
    /// result is that of nextRecord; an iterator that was cancelled stays so. When the source
    /// throws because it cannot be read again, the iterator is at its end, and may be rewound
    /// later.
    virtual unsigned int Rewind(bool scoreIteration);

    /// The name by which the job text refers to the rows; set before the job is composed.
    void SetName(const std::string& name);
    /// Whether user-missing values are served as missing ones; by variable, or for all of them
    /// where nothing is said by variable. What says so is borrowed.
    void SetExcludeUserMissing(bool exclude);
    void SetVarValidSpecs(const ACAVarValidSpecs* specs);
    void SetScoreIteration(bool score);
    /// Borrowed; null for none.
    void SetStopProcessor(HVStopProcessor* processor);
    /// Neither to nor from kWeightNone, which is settled at construction.
    void SetFreqWeightAdj(WeightAdjust adjust);
    /// Field `target`, if it is a Real, becomes `value`, itself plus `value`, or field `source`
    /// plus `value`: as `source` is behind it or negative, is it, or is before it.
    void SetVariableIncrement(int target, int source, double value);
    /// For good. Any thread.
    void SetCancelStatus();
    /// Takes missing values out of the data model that are served as numbers.
    void UpdateUserMissing();

    bool GetExcludeUserMissing() const;
    WeightAdjust GetFreqWeightAdj() const;
    bool GetScoreIteration() const;
    HVStopProcessor* GetStopProcessor() const;
    const ACAVarValidSpecs* GetVarValidSpecs() const;
    /// The cases being read; null at their end. It stays the iterator's.
    VEXA_InputCaseIterator* GetStatDSIter() const;
    bool GetCancelStatus() const;
    const CFMetaData& getMetaData() const;
    int GetIncrTargetVarInd() const;
    int GetIncrSourceVarInd() const;
    double GetIncrVarValue() const;
    /// Counts of the first pass: cases, those with a positive weight, and the others; with their
    /// weights.
    int GetNCases() const;
    int GetNValidCases() const;
    int GetNInvalidCases() const;
    double GetWeightNCases() const;
    double GetWeightNValidCases() const;
    double GetWeightNInvalidCases() const;
    /// Whether every positive weight stayed one when it was rounded, and whether it was a whole
    /// number to begin with. Known after a first pass with rounded weights.
    bool AreAllWeightsGood() const;
    bool AreAllWeightsIntegers() const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
