#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/HvintegExport.h"

namespace EmbeddedHV {
class RowDataIterator;
}

/// Scores rows of the engine with a transform model, within the process and without a job.
///
///     HVTransformScorer scorer;
///     if (!scorer.PrepareScoring(rows, pmml, {}, true))
///         return false;
///     while (rows->nextRecord() == 0)
///         if (scorer.ScoreRecord())
///             use(scorer.GetTargetValues());
///
/// Copies share everything, including the prepared model. All copies belong to one thread.
class HVINTEG_EXPORT HVTransformScorer
{
public:
    /// Creates a scorer without a model.
    HVTransformScorer();
    HVTransformScorer(const HVTransformScorer&) = default;
    HVTransformScorer& operator=(const HVTransformScorer&) = default;
    virtual ~HVTransformScorer();

    /// Reads a PMML text and binds the model's inputs to the fields of the rows by name, ignoring
    /// letter case. Call it once per object. The iterator is borrowed while rows are scored.
    /// `names` selects and orders the outputs, in UTF-8 or in the host's encoding. An exact match
    /// is preferred to one with different letter case. Without names all outputs are selected, in
    /// the order of the model.
    ///
    /// Returns false, without a message, for:
    ///  - a null iterator, or a model that cannot be read or is not a transform model;
    ///  - an input that the rows do not have, or that is a text on one side only;
    ///  - a number in the model and a date or timestamp in the rows, or a date on one side and a
    ///    time of day on the other;
    ///  - a text output, or a name that the model does not have.
    ///
    /// Throws CFMetaDataError if the data model of the rows cannot be read.
    bool PrepareScoring(EmbeddedHV::RowDataIterator* iterator, const std::string& model,
                        const std::vector<std::string>& names, bool namesAreUTF8);
    /// Scores the current row of the iterator. Returns false if the model cannot score it: its
    /// target values are then missing, and later rows can still be scored.
    bool ScoreRecord();

    /// The names of the model's inputs (UTF-8).
    const std::vector<std::string>& GetInputModelVarNames() const;
    /// The names of all outputs of the model (UTF-8), whatever was selected.
    const std::vector<std::string>& GetOutputModelVarNames() const;
    /// The selected results of the last row; test each with IsValidDouble. Dates and timestamps are
    /// seconds since 1582-10-14.
    const std::vector<double>& GetTargetValues() const;
    /// False for a missing or invalid result.
    static bool IsValidDouble(double value);

private:
    struct Impl;
    std::shared_ptr<Impl> _impl;
};
