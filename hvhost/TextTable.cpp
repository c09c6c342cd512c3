#include "TextTable.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <ostream>

#include "ResultTable.h"
#include "Text.h"

namespace {

constexpr std::size_t kDefaultWidth = 80;
constexpr std::size_t kMargins = 3; ///< a blank on each side of a cell, and a line
constexpr std::size_t kNarrowest = 8;

/// Columns of a table with the width of each.
using Columns = std::vector<std::size_t>;

/// A text of so many characters at most; a longer one ends in an ellipsis.
std::string shortened(const std::string& text, std::size_t width)
{
    if (countCharacters(text) <= width)
        return text;
    std::size_t end = 0;
    for (std::size_t seen = 0; end < text.size(); ++end)
        if (beginsCharacter(text[end]) && ++seen == width)
            break;
    return text.substr(0, end) + "…";
}

/// Numbers as people read them in a table: seven significant digits. A missing value is a period.
std::string cellText(const std::optional<std::string>& cell, const ResultTable::Column& column)
{
    if (!cell)
        return ".";
    if (column.storage == CFField::Real) {
        std::array<char, 32> buffer{};
        std::snprintf(buffer.data(), buffer.size(), "%.7g", std::strtod(cell->c_str(), nullptr));
        return buffer.data();
    }
    return printable(*cell);
}

/// A table under drawing: texts and widths of its cells.
class Drawing
{
public:
    Drawing(const ResultTable& table, std::size_t width);

    /// The columns of each table to draw.
    std::vector<Columns> split() const;
    void draw(const Columns& columns, std::ostream& out) const;

private:
    std::size_t needed(const Columns& columns) const;
    void rule(const Columns& columns, const char* left, const char* middle, const char* right,
              std::ostream& out) const;
    void line(const Columns& columns, const std::vector<std::string>& texts,
              std::ostream& out) const;

    const ResultTable& _table;
    std::size_t _width;
    std::vector<std::string> _header;
    std::vector<std::vector<std::string>> _cells;
    std::vector<std::size_t> _widths;
};

Drawing::Drawing(const ResultTable& table, std::size_t width) : _table(table), _width(width)
{
    for (const ResultTable::Column& column : table.columns) {
        _header.push_back(cellText(column.name, {}));
        _widths.push_back(countCharacters(_header.back()));
    }
    for (const ResultTable::Row& row : table.rows) {
        std::vector<std::string> texts;
        for (std::size_t i = 0; i < row.size(); ++i) {
            texts.push_back(cellText(row[i], table.columns[i]));
            _widths[i] = std::max(_widths[i], countCharacters(texts.back()));
        }
        _cells.push_back(std::move(texts));
    }
    const std::size_t widest = std::max(kNarrowest, width - std::min(width, kMargins + 1));
    for (std::size_t& columnWidth : _widths)
        columnWidth = std::min(columnWidth, widest);
}

std::size_t Drawing::needed(const Columns& columns) const
{
    return std::accumulate(
        columns.begin(), columns.end(), std::size_t{1},
        [this](std::size_t sum, std::size_t i) { return sum + _widths[i] + kMargins; });
}

std::vector<Columns> Drawing::split() const
{
    Columns keys(std::min(_table.keyCount, _table.columns.size()));
    std::iota(keys.begin(), keys.end(), std::size_t{0});
    // Keys that leave no room for what they stand for are not worth repeating.
    const Columns repeated = needed(keys) * 2 <= _width ? keys : Columns();
    std::vector<Columns> tables{repeated};
    for (std::size_t i = repeated.size(); i < _widths.size(); ++i) {
        Columns wider = tables.back();
        wider.push_back(i);
        if (needed(wider) <= _width || tables.back().size() == repeated.size()) {
            tables.back() = wider;
        } else {
            tables.push_back(repeated);
            tables.back().push_back(i);
        }
    }
    return tables;
}

void Drawing::rule(const Columns& columns, const char* left, const char* middle, const char* right,
                   std::ostream& out) const
{
    const char* joint = left;
    for (const std::size_t i : columns) {
        out << joint;
        for (std::size_t n = 0; n + 1 < _widths[i] + kMargins; ++n)
            out << "─";
        joint = middle;
    }
    out << right << '\n';
}

void Drawing::line(const Columns& columns, const std::vector<std::string>& texts,
                   std::ostream& out) const
{
    for (const std::size_t i : columns) {
        const std::string text = shortened(texts[i], _widths[i]);
        const std::string padding(_widths[i] - countCharacters(text), ' ');
        out << "│ " << (_table.columns[i].isNumber() ? padding + text : text + padding) << ' ';
    }
    out << "│\n";
}

void Drawing::draw(const Columns& columns, std::ostream& out) const
{
    rule(columns, "┌", "┬", "┐", out);
    line(columns, _header, out);
    rule(columns, "├", "┼", "┤", out);
    for (const std::vector<std::string>& row : _cells)
        line(columns, row, out);
    rule(columns, "└", "┴", "┘", out);
}

} // namespace

std::size_t outputWidth()
{
    winsize size{};
    if (isatty(STDOUT_FILENO) != 0 && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 &&
        size.ws_col > 0)
        return size.ws_col;
    return kDefaultWidth;
}

void printTextTable(const ResultTable& table, std::size_t width, std::ostream& out)
{
    const Drawing drawing(table, width);
    for (const Columns& columns : drawing.split())
        drawing.draw(columns, out);
}
