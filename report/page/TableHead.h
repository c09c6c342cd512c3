#pragma once

#include <iosfwd>
#include <string>

#include "report/document/TableAxis.h"
#include "report/page/TableNotes.h"

/// Shared state of the parts of a grid. `named`: cells refer to their labels by name, which is used
/// if there are several levels of labels.
struct TableGrid
{
    const OutputTable& table;
    const TableAxis& rows;
    const TableAxis& columns;
    TableNotes& notes;
    std::string anchor;
    OutputCells::Address layer; ///< an address with the categories of the grid's layer
    bool named = false;

    /// Whether the first cells of a column are texts.
    bool hasWords(std::size_t column) const;
    std::string rowPrefix() const { return anchor + "r"; }
    std::string columnPrefix() const { return anchor + "c"; }
};

/// A label as a header cell. `scope` is the value for a single row or column; it is extended for a
/// group.
std::string headerCell(TableGrid& grid, const AxisLabel& label, const std::string& scope,
                       const std::string& name, const std::string& more = {});

/// Writes the head: a row for each level of column labels, and the corner with its text and the
/// names of the row dimensions.
void writeTableHead(std::ostream& out, TableGrid& grid);
