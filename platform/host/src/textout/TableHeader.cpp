#include "textout/TableHeader.h"

#include <algorithm>
#include <optional>

#include "TerminalText.h"

namespace {

/// One row of the header over the columns: names of a dimension, or labels of a level.
struct HeaderLine
{
    std::size_t part = 0;
    std::optional<std::size_t> depth; ///< nothing for the name
};

std::vector<HeaderLine> headerLines(const TextAxis& columns)
{
    std::vector<HeaderLine> lines;
    for (std::size_t part = 0; part < columns.parts().size(); ++part) {
        if (columns.parts()[part].hasName())
            lines.push_back({part, std::nullopt});
        for (std::size_t depth = 0; depth < columns.parts()[part].depth; ++depth)
            lines.push_back({part, depth});
    }
    return lines;
}

bool hasRowNames(const TextAxis& rows)
{
    return std::any_of(rows.parts().begin(), rows.parts().end(),
                       [](const TextAxis::Part& part) { return part.hasName(); });
}

/// The columns that the labels of a row dimension take; a name takes one even without labels.
std::size_t columnsOf(const TextAxis::Part& part)
{
    return std::max<std::size_t>(part.depth, part.hasName() ? 1 : 0);
}

class HeaderBuilder
{
public:
    HeaderBuilder(TextGrid& grid, const OutputTable& table, const TextAxis& rows,
                  const TextAxis& columns, const NoteSigns& signs)
        : _grid(grid), _table(table), _rows(rows), _columns(columns), _signs(signs),
          _lines(headerLines(columns))
    {
    }
    void build();

private:
    void corner();
    void rowNames(std::size_t top);
    void line(std::size_t row);
    std::size_t name(std::size_t row, std::size_t column);
    std::size_t label(std::size_t row, std::size_t column);
    std::size_t untilNextLine(std::size_t row, std::size_t rows) const;
    void add(std::string text, const std::vector<int>& notes, std::size_t row, std::size_t column,
             std::size_t rows, std::size_t columns);

    TextGrid& _grid;
    const OutputTable& _table;
    const TextAxis& _rows;
    const TextAxis& _columns;
    const NoteSigns& _signs;
    std::vector<HeaderLine> _lines;
};

void HeaderBuilder::add(std::string text, const std::vector<int>& notes, std::size_t row,
                        std::size_t column, std::size_t rows, std::size_t columns)
{
    if (rows > 0 && columns > 0)
        _grid.header.push_back({std::move(text), _signs.signs(notes), row, column, rows, columns});
}

void HeaderBuilder::build()
{
    const std::size_t inCorner = (_table.cornerText ? 1U : 0U) + (hasRowNames(_rows) ? 1U : 0U);
    _grid.headerRows = std::max(_lines.size(), inCorner);
    corner();
    if (_lines.empty())
        add({}, {}, 0, _grid.keyCount, _grid.headerRows, _columns.size());
    else
        for (std::size_t row = 0; row < _lines.size(); ++row)
            line(row);
}

void HeaderBuilder::corner()
{
    const bool hasNames = hasRowNames(_rows);
    const std::size_t textRows =
        _table.cornerText || !hasNames ? _grid.headerRows - (hasNames ? 1 : 0) : 0;
    add(_table.cornerText ? _table.cornerText->text : std::string(), {}, 0, 0, textRows,
        _grid.keyCount);
    if (hasNames)
        rowNames(textRows);
}

void HeaderBuilder::rowNames(std::size_t top)
{
    std::size_t column = 0;
    for (const TextAxis::Part& part : _rows.parts()) {
        const std::size_t columns = columnsOf(part);
        if (part.hasName())
            add(part.dimension->name.text, part.dimension->notes, top, column,
                _grid.headerRows - top, columns);
        else
            add({}, {}, top, column, _grid.headerRows - top, columns);
        column += columns;
    }
}

void HeaderBuilder::line(std::size_t row)
{
    for (std::size_t column = 0; column < _columns.size();)
        column += _lines[row].depth ? label(row, column) : name(row, column);
}

/// What ends the labels of the last line ends the header.
std::size_t HeaderBuilder::untilNextLine(std::size_t row, std::size_t rows) const
{
    return row + rows == _lines.size() ? _grid.headerRows - row : rows;
}

std::size_t HeaderBuilder::name(std::size_t row, std::size_t column)
{
    const TextAxis::Part& part = _columns.parts()[_lines[row].part];
    const std::size_t width = part.stride * part.leaves.size();
    add(part.dimension->name.text, part.dimension->notes, row, _grid.keyCount + column,
        untilNextLine(row, 1), width);
    return width;
}

std::size_t HeaderBuilder::label(std::size_t row, std::size_t column)
{
    const TextAxis::Level level{_lines[row].part, *_lines[row].depth};
    std::size_t width = 1;
    while (column + width < _columns.size() && _columns.continues(level, column + width))
        ++width;
    // One that ended above lies over this line, too.
    if (const OutputCategory* const category = _columns.label(level, column)) {
        const TextAxis::Part& part = _columns.parts()[level.part];
        const bool isLast = _columns.labels(level.part, column).size() == level.depth + 1;
        add(category->label.text, category->notes, row, _grid.keyCount + column,
            untilNextLine(row, isLast ? part.depth - level.depth : 1), width);
    }
    return width;
}

} // namespace

NoteSigns::NoteSigns(const OutputTable& table)
{
    for (const std::string& marker : noteMarkers(table))
        _signs.push_back("[" + terminalText(marker) + "]");
}

std::string NoteSigns::signs(const std::vector<int>& notes) const
{
    std::string all;
    for (const int note : notes)
        all += _signs[static_cast<std::size_t>(note)];
    return all;
}

std::size_t keyColumns(const OutputTable& table, const TextAxis& rows)
{
    std::size_t count = 0;
    for (const TextAxis::Part& part : rows.parts())
        count += columnsOf(part);
    return count == 0 && table.cornerText ? 1 : count;
}

void setHeader(TextGrid& grid, const OutputTable& table, const TextAxis& rows,
               const TextAxis& columns, const NoteSigns& signs)
{
    HeaderBuilder(grid, table, rows, columns, signs).build();
}
