#pragma once

#include <iosfwd>
#include <string>

#include "output/TableAxis.h"
#include "page/TableNotes.h"

/// What the parts of one grid of a table share. `named`: whether cells name the labels that they
/// belong to, which takes more than one level of labels to be worth it.
struct TableGrid
{
    const OutputTable& table;
    const TableAxis& rows;
    const TableAxis& columns;
    TableNotes& notes;
    std::string anchor;
    OutputCells::Address layer; ///< an address with the categories of the grid's layer in it
    bool named = false;

    /// Whether the first cells of a column say that it is one of texts.
    bool hasWords(std::size_t column) const;
    std::string rowPrefix() const { return anchor + "r"; }
    std::string columnPrefix() const { return anchor + "c"; }
};

/// A label as a header cell; `scope` is the word for a cell that heads one row or column, which
/// grows to that of a group.
std::string headerCell(TableGrid& grid, const AxisLabel& label, const std::string& scope,
                       const std::string& name, const std::string& more = {});

/// Writes the head: the labels of the columns, a level a row, and at their left the corner with its
/// text and the names of the row dimensions.
void writeTableHead(std::ostream& out, TableGrid& grid);
