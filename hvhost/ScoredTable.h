#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "ResultTable.h"
#include "ScoringModel.h"

class CFMetaData;
class HVTransformScorer;
class InterruptWatch;

/// The rows that are scored, with the fields that are kept and the targets. All is borrowed.
class ScoredTable
{
public:
    /// Fields are kept by name, letter case apart; all if none is named. Throws CommandFault
    /// (Usage) for one that there is not, and for a target with the name of one.
    ScoredTable(EmbeddedHV::RowDataIterator& rows, const CFMetaData& model,
                const std::vector<std::string>& keep,
                const std::vector<ScoringModel::Variable>& targets);

    /// Scores all rows, which it can do once, and writes them.
    void write(HVTransformScorer& scorer, const TableLook& look, const InterruptWatch& watch,
               std::ostream& out);
    long long rowCount() const { return _rowCount; }
    /// A sentence on kept numbers that may be shown rounded; empty for none.
    std::string roundedText() const { return roundedColumnsText(_columns); }
    /// The rows with a target whose value is not valid.
    long long failedCount() const { return _failedCount; }

private:
    void keepField(const CFMetaData& model, std::size_t index);
    ResultTable::Row scoredRow(HVTransformScorer& scorer);

    EmbeddedHV::RowDataIterator& _rows;
    std::vector<std::size_t> _kept; ///< fields of the rows
    std::vector<ResultTable::Column> _columns;
    long long _rowCount = 0;
    long long _failedCount = 0;
};
