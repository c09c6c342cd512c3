#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "report/text/TextGrid.h"

/// Columns that are drawn side by side.
using GridBlock = std::vector<std::size_t>;

/// The widths of a table's columns, and their distribution to blocks side by side.
class GridColumns
{
public:
    static constexpr std::size_t kMargins = 3; ///< a blank on each side of a cell, and a line

    GridColumns(const TextGrid& grid, std::size_t width);

    const std::vector<GridBlock>& blocks() const { return _blocks; }
    std::size_t width(std::size_t column) const { return _columns[column].width; }
    /// Columns at the right that are reserved for the marks of numbers.
    std::size_t markWidth(std::size_t column) const { return _columns[column].marks; }
    /// The difference to the longest fraction of the column.
    std::size_t lacking(std::size_t column, std::optional<std::size_t> fraction) const
    {
        return fraction ? _columns[column].fraction - *fraction : 0;
    }
    bool hasNumbers(std::size_t column) const { return _columns[column].numbers > 0; }
    /// The width of columns side by side, with the lines between them.
    std::size_t width(const std::size_t* begin, const std::size_t* end) const;

private:
    /// Widths of a column's cells, in characters.
    struct Column
    {
        std::size_t width = 0;
        std::size_t numbers = 0;  ///< width of all numbers
        std::size_t whole = 0;    ///< the widest part of a number before its fraction
        std::size_t fraction = 0; ///< the longest one
        std::size_t marks = 0;    ///< the widest mark of a number
    };

    void measureCells();
    void measureCell(std::size_t column, const TextGrid::Cell& cell);
    void makeRoom(const TextGrid::Label& label);
    void makeRoom(const TextGrid::Label& label, const GridBlock& block);
    void widen(std::size_t column, std::size_t width);
    std::size_t needed(std::size_t begin, std::size_t end) const;
    void shrinkKeys();
    void split();

    const TextGrid& _grid;
    std::size_t _width;
    std::vector<Column> _columns;
    std::vector<GridBlock> _blocks;
};
