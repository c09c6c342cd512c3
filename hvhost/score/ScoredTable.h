#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "hvhost/score/ScoringModel.h"
#include "hvhost/show/ResultTable.h"

class CFMetaData;
class HVTransformScorer;
class InterruptWatch;

/// The scored rows, with the kept fields and the targets. Borrows all arguments.
class ScoredTable
{
public:
    /// Fields are kept by name, by the rule of placeOfName; without names all are kept. Throws
    /// CommandFault (Usage) for an unknown field, and for a target with the name of a kept field.
    ScoredTable(EmbeddedHV::RowDataIterator& rows, const CFMetaData& model,
                const std::vector<std::string>& keep,
                const std::vector<ScoringModel::Variable>& targets);

    /// Scores and writes all rows. Call it once.
    void write(HVTransformScorer& scorer, const TableLook& look, const InterruptWatch& watch,
               std::ostream& out);
    long long rowCount() const { return _rowCount; }
    /// Names the kept columns whose numbers may be rounded, in one sentence; may be empty.
    std::string roundedText() const { return roundedColumnsText(_columns); }
    /// The number of rows with an invalid target value.
    long long failedCount() const { return _failedCount; }

private:
    void keepField(const CFMetaData& model, std::size_t index);
    ResultTable::Row scoredRow(HVTransformScorer& scorer);

    EmbeddedHV::RowDataIterator& _rows;
    std::vector<std::size_t> _kept; ///< indexes of fields in the rows
    std::vector<ResultTable::Column> _columns;
    long long _rowCount = 0;
    long long _failedCount = 0;
};
