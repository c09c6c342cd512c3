#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "HostExport.h"

/// A table as it is drawn with lines in a terminal: a header of labels, which may lie over several
/// rows and columns, and rows of cells, which are asked for while they are drawn. Texts are UTF-8,
/// with whatever characters; a line end begins another line in the same place, and a text that is
/// too wide for it takes more of them, up to a few.
struct TextGrid
{
    /// A cell that takes one column.
    struct Cell
    {
        std::string text;
        std::string mark;      ///< stands behind the text and is never cut, as a footnote's
                               ///< sign; as terminalText gives it
        bool isNumber = false; ///< stands at the right, and is never cut
        /// So many characters of a number stand from its decimal sign on, where the signs of a
        /// column stand below each other. What has no such place stands at the right end.
        std::optional<std::size_t> fraction = {};
    };
    /// How wide a column may become, in characters of a terminal.
    struct Column
    {
        std::size_t minimum = 1;
        std::size_t maximum = 40; ///< of its texts; numbers take what they need
    };
    /// A text that stands over several rows or columns; `row` and `column` are its first ones.
    struct Label
    {
        std::string text;
        std::string mark;
        std::size_t row = 0;
        std::size_t column = 0;
        std::size_t rows = 1;
        std::size_t columns = 1;
    };

    std::vector<Column> columns;
    /// So many columns, the first ones, tell the rows apart and are drawn again wherever the table
    /// goes on beside the width.
    std::size_t keyCount = 0;
    std::size_t headerRows = 0;
    std::vector<Label> header; ///< cover all rows of the header, and none of it twice
    std::size_t rowCount = 0;
    /// The cell of a row and a column. Every cell is asked for twice.
    std::function<Cell(std::size_t row, std::size_t column)> cell;
    /// Whether there is a line above a row; may be empty.
    std::function<bool(std::size_t row)> beginsGroup;
};

/// The fraction of a number with a decimal point, which may be empty; nothing for one in scientific
/// notation.
HOST_API std::optional<std::size_t> plainFraction(std::string_view number);

/// Draws a table. Columns that do not fit in the width go into further tables below it. Where a key
/// and one column do not fit, lines are longer than the width: nothing is left out.
HOST_API void drawTextGrid(const TextGrid& grid, std::size_t width, std::ostream& out);
