#pragma once

#include "report/document/TableAxis.h"
#include "report/text/TextGrid.h"

/// The signs of footnotes behind texts.
class NoteSigns
{
public:
    explicit NoteSigns(const OutputTable& table);
    /// The sign of one footnote.
    const std::string& sign(std::size_t note) const { return _signs[note]; }
    /// The signs of several footnotes.
    std::string signs(const std::vector<int>& notes) const;

private:
    std::vector<std::string> _signs;
};

/// The number of columns for the row labels, or for the corner text.
std::size_t keyColumns(const OutputTable& table, const TableAxis& rows);

/// Sets the header of a table: the column labels and the corner, with the corner text above the
/// names of the row dimensions.
void setHeader(TextGrid& grid, const OutputTable& table, const TableAxis& rows,
               const TableAxis& columns, const NoteSigns& signs);
