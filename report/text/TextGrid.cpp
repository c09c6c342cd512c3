#include "report/text/TextGrid.h"

#include <algorithm>
#include <array>
#include <ostream>

#include "report/text/GridColumns.h"
#include "report/text/TerminalText.h"

namespace {

/// Joints of lines, by the directions of the lines.
constexpr int kUp = 1;
constexpr int kDown = 2;
constexpr int kLeft = 4;
constexpr int kRight = 8;
constexpr std::array<const char*, 16> kJoints{" ", "╵", "╷", "│", "╴", "┘", "┐", "┤",
                                              "╶", "└", "┌", "├", "─", "┴", "┬", "┼"};

/// The label of each column of a block in a row of the drawing. Equal numbers are one label,
/// without a line inside.
using Tiles = std::vector<std::size_t>;

/// A text at its position in a line of the drawing.
struct Part
{
    std::vector<std::string> lines;
    std::string mark;
    std::size_t width = 0;
    std::size_t markWidth = 0; ///< reserved at the right for marks and longer fractions
    enum
    {
        Left,
        Right,
        Centre
    } place = Left;

    /// The width for the text without its mark.
    std::size_t room() const
    {
        return width - std::min(width, std::max(terminalWidth(mark), markWidth));
    }
};

std::string blanks(std::size_t count)
{
    return std::string(count, ' ');
}

/// Wraps a text. After a few lines it ends in an ellipsis, because a label must not fill a page.
std::vector<std::string> linesIn(const std::string& text, std::size_t room)
{
    constexpr std::size_t kMostLines = 6;
    std::vector<std::string> lines = terminalLines(text);
    const auto isTooWide = [&](const std::string& line) { return terminalWidth(line) > room; };
    if (std::any_of(lines.begin(), lines.end(), isTooWide))
        lines = terminalWrapped(text, room);
    if (lines.size() > kMostLines) {
        lines.resize(kMostLines);
        lines.back() = terminalCut(lines.back() + " …", room);
    }
    return lines;
}

/// One line of a part in the part's width. The mark follows the last line of the text.
std::string lineOf(const Part& part, std::size_t number)
{
    if (number >= part.lines.size())
        return blanks(part.width);
    const bool isLast = number + 1 == part.lines.size();
    const std::string mark = isLast ? part.mark : std::string();
    const std::size_t markWidth = std::max(terminalWidth(mark), part.markWidth);
    const std::size_t room = part.width - std::min(part.width, markWidth);
    const std::string text = terminalCut(part.lines[number], room);
    const std::size_t free = part.width - std::min(part.width, terminalWidth(text) + markWidth);
    const std::string shown =
        terminalIsolated(text) + mark + blanks(markWidth - terminalWidth(mark));
    const std::size_t before = part.place == Part::Left    ? 0
                               : part.place == Part::Right ? free
                                                           : free / 2;
    return blanks(before) + shown + blanks(free - before);
}

/// Draws one block of a table.
class BlockDrawing
{
public:
    BlockDrawing(const TextGrid& grid, const GridColumns& columns, const GridBlock& block,
                 std::ostream& out)
        : _grid(grid), _columns(columns), _block(block), _out(out)
    {
    }
    void draw();

private:
    Tiles headerTiles(const std::vector<std::size_t>& labels, std::size_t row) const;
    Tiles bodyTiles(std::size_t row) const;
    void rule(const Tiles& above, const Tiles& below);
    void parts(const std::vector<Part>& parts);
    void header(std::size_t row, const Tiles& tiles);
    void body(std::size_t row);

    const TextGrid& _grid;
    const GridColumns& _columns;
    const GridBlock& _block;
    std::ostream& _out;
};

/// The label at each position of the header, row by row.
std::vector<std::size_t> labelMap(const TextGrid& grid)
{
    std::vector<std::size_t> map(grid.headerRows * grid.columns.size(), 0);
    for (std::size_t i = 0; i < grid.header.size(); ++i) {
        const TextGrid::Label& label = grid.header[i];
        for (std::size_t row = label.row; row < label.row + label.rows; ++row)
            for (std::size_t n = 0; n < label.columns; ++n)
                map[row * grid.columns.size() + label.column + n] = i;
    }
    return map;
}

Tiles BlockDrawing::headerTiles(const std::vector<std::size_t>& labels, std::size_t row) const
{
    Tiles tiles;
    for (const std::size_t column : _block)
        tiles.push_back(labels[row * _grid.columns.size() + column]);
    return tiles;
}

/// Tiles of the body differ from those of the header and of the previous row.
Tiles BlockDrawing::bodyTiles(std::size_t row) const
{
    Tiles tiles(_block.size());
    for (std::size_t i = 0; i < tiles.size(); ++i)
        tiles[i] = _grid.header.size() + (row % 2) * tiles.size() + i;
    return tiles;
}

/// Draws the line between two rows. It leaves out the inside of a label that continues below; a
/// joint depends on the directions of its lines.
void BlockDrawing::rule(const Tiles& above, const Tiles& below)
{
    const std::size_t count = _block.size();
    const auto hasLine = [&](std::size_t column) {
        return above.empty() || below.empty() || above[column] != below[column];
    };
    const auto isEdge = [&](const Tiles& tiles, std::size_t column) {
        return !tiles.empty() &&
               (column == 0 || column == count || tiles[column - 1] != tiles[column]);
    };
    std::string line;
    for (std::size_t column = 0; column <= count; ++column) {
        const int directions = (isEdge(above, column) ? kUp : 0) |
                               (isEdge(below, column) ? kDown : 0) |
                               (column > 0 && hasLine(column - 1) ? kLeft : 0) |
                               (column < count && hasLine(column) ? kRight : 0);
        line += kJoints[static_cast<std::size_t>(directions)];
        if (column < count)
            for (std::size_t n = 0; n < _columns.width(_block[column]) + 2; ++n)
                line += hasLine(column) ? "─" : " ";
    }
    _out << line << '\n';
}

/// Writes parts side by side, with the height of the highest.
void BlockDrawing::parts(const std::vector<Part>& parts)
{
    std::size_t height = 1;
    for (const Part& part : parts)
        height = std::max(height, part.lines.size());
    for (std::size_t number = 0; number < height; ++number) {
        std::string line;
        for (const Part& part : parts)
            line += "│ " + lineOf(part, number) + ' ';
        _out << line << "│\n";
    }
}

/// A label is shown in the last row of its span.
void BlockDrawing::header(std::size_t row, const Tiles& tiles)
{
    std::vector<Part> shown;
    for (std::size_t begin = 0, end = 0; begin < tiles.size(); begin = end) {
        while (end < tiles.size() && tiles[end] == tiles[begin])
            ++end;
        const TextGrid::Label& label = _grid.header[tiles[begin]];
        Part& part = shown.emplace_back();
        part.width = _columns.width(_block.data() + begin, _block.data() + end);
        if (label.columns > 1 && label.column >= _grid.keyCount)
            part.place = Part::Centre;
        else if (label.columns == 1 && _columns.hasNumbers(_block[begin]))
            part.place = Part::Right;
        if (row + 1 == label.row + label.rows) {
            part.mark = label.mark;
            part.lines = linesIn(label.text, part.room());
        }
    }
    parts(shown);
}

void BlockDrawing::body(std::size_t row)
{
    std::vector<Part> shown;
    for (const std::size_t column : _block) {
        const TextGrid::Cell cell = _grid.cell(row, column);
        Part& part = shown.emplace_back();
        part.mark = cell.mark;
        part.width = _columns.width(column);
        if (cell.isNumber)
            part.markWidth = _columns.markWidth(column) + _columns.lacking(column, cell.fraction);
        part.place = cell.isNumber ? Part::Right : Part::Left;
        part.lines = linesIn(cell.text, part.room());
    }
    parts(shown);
}

void BlockDrawing::draw()
{
    const std::vector<std::size_t> labels = labelMap(_grid);
    Tiles above;
    for (std::size_t row = 0; row < _grid.headerRows; ++row) {
        const Tiles tiles = headerTiles(labels, row);
        rule(above, tiles);
        header(row, tiles);
        above = tiles;
    }
    for (std::size_t row = 0; row < _grid.rowCount; ++row) {
        const Tiles tiles = bodyTiles(row);
        if (row == 0 || (_grid.beginsGroup && _grid.beginsGroup(row)))
            rule(above, tiles);
        body(row);
        above = tiles;
    }
    if (!above.empty())
        rule(above, {});
}

} // namespace

std::optional<std::size_t> plainFraction(std::string_view number)
{
    if (number.find('e') != number.npos)
        return std::nullopt;
    const std::size_t point = number.size() > 1 ? number.find('.') : number.npos;
    return point == number.npos ? 0 : number.size() - point;
}

void drawTextGrid(const TextGrid& grid, std::size_t width, std::ostream& out)
{
    if (grid.columns.empty())
        return;
    const GridColumns columns(grid, width);
    for (const GridBlock& block : columns.blocks())
        BlockDrawing(grid, columns, block, out).draw();
}
