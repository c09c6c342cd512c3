#pragma once

#include "TextGrid.h"
#include "output/TableAxis.h"

/// Signs of footnotes, as they stand behind what they belong to.
class NoteSigns
{
public:
    explicit NoteSigns(const OutputTable& table);
    /// Of one footnote, and of all that something has.
    const std::string& sign(std::size_t note) const { return _signs[note]; }
    std::string signs(const std::vector<int>& notes) const;

private:
    std::vector<std::string> _signs;
};

/// The number of columns that hold the labels of the rows, or the corner text alone.
std::size_t keyColumns(const OutputTable& table, const TableAxis& rows);

/// Sets the header of a table: the labels of its columns, and before them the corner, with the
/// corner text over the names of the row dimensions.
void setHeader(TextGrid& grid, const OutputTable& table, const TableAxis& rows,
               const TableAxis& columns, const NoteSigns& signs);
