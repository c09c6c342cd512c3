#include "report/text/TableText.h"

#include <algorithm>

#include "FormattedText.h"
#include "report/document/ShownText.h"
#include "report/document/TableAxis.h"
#include "report/text/TableHeader.h"
#include "report/text/TextGrid.h"
#include "report/text/TextPage.h"

namespace {

constexpr std::size_t kPointsOfCharacter = 6;
constexpr std::size_t kWidestLabel = 40;
constexpr std::size_t kLeastMaximum = 8;

std::size_t charactersOf(const std::optional<int>& points, std::size_t otherwise)
{
    return points && *points > 0 ? static_cast<std::size_t>(*points) / kPointsOfCharacter
                                 : otherwise;
}

/// In the output, a backslash and an "n" mark a line end in a cell.
std::string withLineEnds(std::string text)
{
    for (std::size_t at = text.find("\\n"); at != std::string::npos; at = text.find("\\n", at + 1))
        text.replace(at, 2, "\n");
    return text;
}

/// Writes one table, which is borrowed.
class TableWriter
{
public:
    TableWriter(const OutputTable& table, TextPage& page)
        : _table(table), _page(page), _rows(table, TnDimension::Row),
          _columns(table, TnDimension::Column), _layers(table, TnDimension::Layer), _signs(table),
          _address(table.dimensions.size(), 0)
    {
        for (const TableAxis::Head& head : _layers.heads())
            _layerLeaves.push_back(shownLeaves(*head.dimension));
    }
    void write();

private:
    void title();
    void layer(std::size_t position);
    std::string layerText(std::size_t number, std::size_t position) const;
    TextGrid grid();
    TextGrid::Cell key(std::size_t row, std::size_t column) const;
    TextGrid::Cell cell(std::size_t row, std::size_t column);
    bool beginsGroup(std::size_t row) const;
    void notes();

    const OutputTable& _table;
    TextPage& _page;
    TableAxis _rows;
    TableAxis _columns;
    TableAxis _layers;
    NoteSigns _signs;
    std::vector<std::vector<OutputLeaf>> _layerLeaves; ///< by dimension
    OutputCells::Address _address;                     ///< of the current cell
};

void TableWriter::title()
{
    if (!_table.hidesTitle)
        _page.write(_table.title.text + _signs.signs(_table.titleNotes), TextPage::Style::Bold);
    std::string group;
    for (const auto& [name, value] : _table.splitGroup)
        group.append(group.empty() ? "" : ", ").append(name).append(" = ").append(value);
    if (!group.empty())
        _page.write(group);
}

std::string TableWriter::layerText(std::size_t number, std::size_t position) const
{
    const OutputDimension& dimension = *_layers.heads()[number].dimension;
    std::string text;
    if (!dimension.hidesName)
        text = dimension.name.text + _signs.signs(dimension.notes);
    if (dimension.hidesChildren)
        return text;
    const char* before = text.empty() ? "" : ": ";
    for (const int node : _layerLeaves[number][_layers.categoryAt(number, position)].path) {
        const OutputCategory& category = dimension.nodes[static_cast<std::size_t>(node)];
        if (!category.isShown)
            continue;
        text += before + shownText(category.label) + _signs.signs(category.notes);
        before = " › ";
    }
    return text;
}

void TableWriter::layer(std::size_t position)
{
    if (position > 0)
        _page.beginBlock();
    for (std::size_t number = 0; number < _layerLeaves.size(); ++number)
        if (const std::string text = layerText(number, position); !text.empty())
            _page.write(text);
    _layers.setAddress(position, _address);
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
    if (column >= static_cast<std::size_t>(_rows.levels()))
        return {};
    const std::optional<AxisLabel> label = _rows.labelAt(row, static_cast<int>(column));
    return label ? TextGrid::Cell{shownText(*label->text), _signs.signs(*label->notes), false}
                 : TextGrid::Cell();
}

TextGrid::Cell TableWriter::cell(std::size_t row, std::size_t column)
{
    _rows.setAddress(row, _address);
    _columns.setAddress(column, _address);
    std::optional<OutputCell> found = _table.cells.at(_address);
    if (!found)
        return {};
    TnContent& content = found->content;
    if (!content.number)
        return {withLineEnds(content.text), _signs.signs(found->notes)};
    const std::optional<std::size_t> fraction = fractionOf(content.text, content.format);
    std::string text = _page.options().groupsDigits ? shownNumber(content) : shownText(content);
    return {std::move(text), _signs.signs(found->notes), true, fraction};
}

/// Separates outermost labels if one of the two spans several rows.
bool TableWriter::beginsGroup(std::size_t row) const
{
    if (_rows.levels() == 0)
        return false;
    const std::optional<AxisLabel> label = _rows.labelAt(row, 0);
    return label && (label->span > 1 || !_rows.labelAt(row - 1, 0));
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
