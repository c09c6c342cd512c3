#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/HvintegExport.h"

namespace EmbeddedHV {
class RowDataIterator;
}

/// Scores rows of the engine with a transform model, in the process and without a job.
///
///     HVTransformScorer scorer;
///     if (!scorer.PrepareScoring(rows, pmml, {}, true))
///         return false;
///     while (rows->nextRecord() == 0)
///         if (scorer.ScoreRecord())
///             use(scorer.GetTargetValues());
///
/// A copy shares everything with its source, the prepared model too; the last of them releases it.
/// One thread for all that share.
class HVINTEG_EXPORT HVTransformScorer
{
public:
    HVTransformScorer();
    HVTransformScorer(const HVTransformScorer&) = default;
    HVTransformScorer& operator=(const HVTransformScorer&) = default;
    virtual ~HVTransformScorer();

    /// Reads a PMML text and binds the model's inputs to the fields of the rows by name, letter
    /// case apart; once for an object. The iterator is borrowed for as long as rows are scored.
    /// `names` are the outputs whose values are wanted, in that order, in UTF-8 or in the host's
    /// encoding, the exact name before one in other letter case; without any, all in the order of
    /// the model. False, without a message, for a model that is not read or is of another kind, an
    /// input that the rows do not have, an input that is a text in one and not in the other, a
    /// number in the model and a date or timestamp in the rows, or a date in one and a time of day
    /// in the other, a model with an output that is a text, and a name that the model does not
    /// have. A data model that cannot be read throws CFMetaDataError.
    bool PrepareScoring(EmbeddedHV::RowDataIterator* iterator, const std::string& model,
                        const std::vector<std::string>& names, bool namesAreUTF8);
    /// Scores the row on which the iterator stands. False for a row that the model cannot score:
    /// its target values are missing, and the next row may be scored all the same.
    bool ScoreRecord();

    /// The inputs of the model, and all its outputs, whatever was asked for.
    const std::vector<std::string>& GetInputModelVarNames() const;
    const std::vector<std::string>& GetOutputModelVarNames() const;
    /// The results of the last row, where one that is missing or not valid is no valid double.
    /// Dates and timestamps are seconds since 1582-10-14.
    const std::vector<double>& GetTargetValues() const;
    /// Whether a result is a value.
    static bool IsValidDouble(double value);

private:
    struct Impl;
    std::shared_ptr<Impl> _impl;
};
