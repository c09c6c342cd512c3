#include "textout/TableText.h"

#include <algorithm>

#include "TerminalText.h"
#include "TextGrid.h"
#include "textout/TextAxis.h"
#include "textout/TableHeader.h"
#include "textout/TextPage.h"

namespace {

constexpr std::size_t kPointsOfCharacter = 6;
constexpr std::size_t kWidestLabel = 40;
constexpr std::size_t kLeastMaximum = 8;

std::size_t charactersOf(const std::optional<int>& points, std::size_t otherwise)
{
    return points && *points > 0 ? static_cast<std::size_t>(*points) / kPointsOfCharacter
                                 : otherwise;
}

/// The output has two characters, a backslash and an n, where a line of a cell ends.
std::string withLineEnds(std::string text)
{
    for (std::size_t at = text.find("\\n"); at != std::string::npos; at = text.find("\\n", at + 1))
        text.replace(at, 2, "\n");
    return text;
}

/// The level of the row labels that a key column shows; nothing for one that has a name alone.
std::vector<std::optional<TextAxis::Level>> levelsOfKeys(const TextAxis& rows)
{
    std::vector<std::optional<TextAxis::Level>> levels;
    for (std::size_t part = 0; part < rows.parts().size(); ++part) {
        const std::size_t depth = rows.parts()[part].depth;
        for (std::size_t level = 0; level < depth; ++level)
            levels.emplace_back(TextAxis::Level{part, level});
        if (depth == 0 && rows.parts()[part].hasName())
            levels.emplace_back();
    }
    return levels;
}

/// Writes one table; borrows it.
class TableWriter
{
public:
    TableWriter(const OutputTable& table, TextPage& page)
        : _table(table), _page(page), _rows(table, TnDimension::Row),
          _columns(table, TnDimension::Column), _layers(table, TnDimension::Layer), _signs(table),
          _keyLevels(levelsOfKeys(_rows)), _address(table.dimensions.size(), 0)
    {
    }
    void write();

private:
    void title();
    void layer(std::size_t position);
    std::string layerText(std::size_t part, std::size_t position) const;
    TextGrid grid();
    TextGrid::Cell key(std::size_t row, std::size_t column) const;
    TextGrid::Cell cell(std::size_t row, std::size_t column);
    bool beginsGroup(std::size_t row) const;
    void notes();

    const OutputTable& _table;
    TextPage& _page;
    TextAxis _rows;
    TextAxis _columns;
    TextAxis _layers;
    NoteSigns _signs;
    std::vector<std::optional<TextAxis::Level>> _keyLevels;
    OutputCells::Address _address; ///< of the cell that is written
};

void TableWriter::title()
{
    if (!_table.hidesTitle)
        _page.write(_table.title.text + _signs.signs(_table.titleNotes), TextPage::Style::Bold);
    std::string group;
    for (const auto& [name, value] : _table.splitGroup)
        group += (group.empty() ? "" : ", ") + name + " = " + value;
    if (!group.empty())
        _page.write(group);
}

std::string TableWriter::layerText(std::size_t part, std::size_t position) const
{
    const TextAxis::Part& of = _layers.parts()[part];
    std::string text;
    for (const OutputCategory* label : _layers.labels(part, position))
        text += (text.empty() ? "" : " / ") + label->label.text + _signs.signs(label->notes);
    if (!of.hasName())
        return text;
    return of.dimension->name.text + _signs.signs(of.dimension->notes) +
           (text.empty() ? "" : ": " + text);
}

void TableWriter::layer(std::size_t position)
{
    if (position > 0)
        _page.beginBlock();
    for (std::size_t part = 0; part < _layers.parts().size(); ++part)
        if (const std::string text = layerText(part, position); !text.empty())
            _page.write(text);
    _layers.put(position, _address);
    drawTextGrid(grid(), _page.options().width, _page.out());
}

TextGrid TableWriter::grid()
{
    TextGrid grid;
    grid.keyCount = keyColumns(_table, _rows);
    const std::size_t most =
        std::max(charactersOf(_table.maxDataColumnWidth, kWidestLabel), kLeastMaximum);
    const std::size_t least = std::min(charactersOf(_table.minDataColumnWidth, 1), most);
    grid.columns.assign(grid.keyCount, {1, kWidestLabel});
    grid.columns.insert(grid.columns.end(), _columns.size(), {least, most});
    setHeader(grid, _table, _rows, _columns, _signs);
    grid.rowCount = _rows.size();
    grid.cell = [this, keys = grid.keyCount](std::size_t row, std::size_t column) {
        return column < keys ? key(row, column) : cell(row, column - keys);
    };
    grid.beginsGroup = [this](std::size_t row) { return beginsGroup(row); };
    return grid;
}

TextGrid::Cell TableWriter::key(std::size_t row, std::size_t column) const
{
    if (column >= _keyLevels.size() || !_keyLevels[column] ||
        _rows.continues(*_keyLevels[column], row))
        return {};
    const OutputCategory* const category = _rows.label(*_keyLevels[column], row);
    if (!category)
        return {};
    return {category->label.text, _signs.signs(category->notes), false};
}

TextGrid::Cell TableWriter::cell(std::size_t row, std::size_t column)
{
    _rows.put(row, _address);
    _columns.put(column, _address);
    std::optional<OutputCell> found = _table.cells.at(_address);
    if (!found)
        return {};
    const bool isNumber = found->content.number.has_value();
    return {isNumber ? std::move(found->content.text) : withLineEnds(found->content.text),
            _signs.signs(found->notes), isNumber};
}

/// Rows with another outermost label are set off, if one of them has more labels than that.
bool TableWriter::beginsGroup(std::size_t row) const
{
    if (_rows.levels().empty())
        return false;
    const TextAxis::Level& outermost = _rows.levels().front();
    return !_rows.continues(outermost, row) &&
           (_rows.hasDeeper(outermost, row) || _rows.hasDeeper(outermost, row - 1));
}

void TableWriter::notes()
{
    if (_table.caption)
        _page.write(_table.caption->text + _signs.signs(_table.captionNotes));
    for (std::size_t i = 0; i < _table.notes.size(); ++i)
        _page.write(_table.notes[i].text.text, TextPage::Style::Plain, _signs.sign(i) + " ");
}

void TableWriter::write()
{
    _page.beginBlock();
    title();
    for (std::size_t position = 0; position < _layers.size(); ++position)
        layer(position);
    notes();
}

} // namespace

void writeTable(const OutputTable& table, TextPage& page)
{
    TableWriter(table, page).write();
}
