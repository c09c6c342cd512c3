#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/ReportExport.h"

/// A table drawn with lines in a terminal. It has a header of labels, which may span rows and
/// columns, and rows of cells, which are requested while the table is drawn. Texts are UTF-8 and
/// may contain any characters. A line end starts another line in the cell. A text that is too wide
/// is wrapped to a few lines.
struct TextGrid
{
    /// A cell of one column.
    struct Cell
    {
        std::string text;      ///< shown text
        std::string mark;      ///< follows the text and is never cut, for example a footnote's
                               ///< marker; from terminalText
        bool isNumber = false; ///< right-aligned and never cut
        /// The number of characters from the decimal sign on. The signs in a column are aligned. A
        /// number without it is right-aligned.
        std::optional<std::size_t> fraction = {};
    };
    /// Limits for the width of a column, in terminal columns.
    struct Column
    {
        std::size_t minimum = 1;  ///< at least 1
        std::size_t maximum = 40; ///< for texts; numbers take what they need
    };
    /// A text that spans rows or columns; `row` and `column` are the first ones.
    struct Label
    {
        std::string text;        ///< shown text
        std::string mark;        ///< as in Cell
        std::size_t row = 0;     ///< first row in the header
        std::size_t column = 0;  ///< first column
        std::size_t rows = 1;    ///< number of rows
        std::size_t columns = 1; ///< number of columns
    };

    std::vector<Column> columns; ///< from left to right
    /// The number of first columns that identify the rows. They are repeated where the table
    /// continues below because of its width.
    std::size_t keyCount = 0;
    std::size_t headerRows = 0; ///< number of rows in the header
    std::vector<Label> header;  ///< cover all header rows without overlap
    std::size_t rowCount = 0;   ///< number of rows below the header
    /// Returns the cell of a row and a column. Called twice for every cell.
    std::function<Cell(std::size_t row, std::size_t column)> cell;
    /// Whether to draw a line above a row; may be empty.
    std::function<bool(std::size_t row)> beginsGroup;
};

/// The fraction of a number with a decimal point, possibly 0; no result for scientific notation.
REPORT_API std::optional<std::size_t> plainFraction(std::string_view number);

/// Draws a table. Columns that do not fit into `width` are drawn as further tables below it. If the
/// key columns and one column do not fit, lines are longer than the width; nothing is left out.
REPORT_API void drawTextGrid(const TextGrid& grid, std::size_t width, std::ostream& out);
