#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

#include "CFMetaData.h"
#include "RowDataIterator.h"
#include "VexaDataSource.h"
#include "data/CaseCounts.h"
#include "data/RecordSlots.h"
#include "runner/HVStopProcessor.h"

/// Any thread may set it. It is never cleared.
struct CancelFlag
{
    CancelFlag() = default;
    CancelFlag(const CancelFlag& other) : isSet(other.isSet.load()) {}
    CancelFlag& operator=(const CancelFlag& other)
    {
        isSet = other.isSet.load();
        return *this;
    }
    std::atomic<bool> isSet = false;
};

/// Reads cases as records, one by one or in blocks. The statuses are those of RowDataIterator.
/// Copies share the cases. One thread at a time, except for `cancelled`.
///
/// Only the first pass counts cases and weights and checks the weights. rewind therefore completes
/// an unfinished first pass.
struct CaseReader
{
    /// Decides how to fill each field from the view's columns, so that records need no look-up, and
    /// goes before the first case. The view must outlive the reader.
    void start(const VEXA_DataSource& view, const CFMetaData& metadata);
    /// Moves to the next case with a weight above 0. Returns the status.
    unsigned int nextRecord();
    /// Whether nextRecords can serve these fields.
    bool servesBlocks(const std::vector<std::size_t>& fields) const;
    /// Moves over cases that are in memory and writes the values of some fields. See RowBlocks.
    unsigned int nextRecords(const std::vector<std::size_t>& fields,
                             const std::vector<double*>& columns, std::size_t most,
                             std::size_t& count);
    /// Completes the counts, then goes back to the first case. Returns the status. If the view
    /// throws, the reader is at its end.
    unsigned int rewind(const VEXA_DataSource& view);

    RecordRules rules;
    RecordSlots slots;
    CaseCounts counts;
    unsigned int status = EmbeddedHV::RowDataIterator::RecordAvailable;
    HVStopProcessor* stopProcessor = nullptr; ///< borrowed; may be null
    CancelFlag cancelled;
    std::shared_ptr<VEXA_InputCaseIterator> cases; ///< null at the end

private:
    /// Asks the stop processor. A cancelled reader stays cancelled.
    bool isCancelled();
    unsigned int endOfData();
    /// The cases as blocks; null if the host serves them one by one.
    VEXA_CaseBlock* blocks() const { return dynamic_cast<VEXA_CaseBlock*>(cases.get()); }
    /// The number of the next `ahead` cases to take before a cancel; at least 1.
    std::size_t casesUntilCancel(std::size_t ahead);
    /// Writes a field of the next `count` cases to `column`.
    void copyField(const VEXA_CaseBlock& block, std::size_t field, std::size_t count,
                   double* column) const;

    bool _isFirstPass = true;
};
