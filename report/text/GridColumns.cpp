#include "report/text/GridColumns.h"

#include <algorithm>
#include <numeric>

#include "report/text/TerminalText.h"

namespace {

constexpr std::size_t kNarrowest = 6;

std::size_t widestLine(const std::string& text)
{
    std::size_t widest = 0;
    for (const std::string& line : terminalLines(text))
        widest = std::max(widest, terminalWidth(line));
    return widest;
}

std::size_t widthOf(const TextGrid::Label& label)
{
    return widestLine(label.text) + terminalWidth(label.mark);
}

} // namespace

GridColumns::GridColumns(const TextGrid& grid, std::size_t width) : _grid(grid), _width(width)
{
    for (const TextGrid::Column& column : grid.columns)
        _columns.push_back({std::max<std::size_t>(column.minimum, 1), 0, 0, 0, 0});
    measureCells();
    // Labels over one column are placed before labels over several.
    std::vector<const TextGrid::Label*> labels;
    for (const TextGrid::Label& label : grid.header)
        labels.push_back(&label);
    std::stable_sort(labels.begin(), labels.end(), [](const auto* left, const auto* right) {
        return left->columns < right->columns;
    });
    for (const TextGrid::Label* label : labels)
        makeRoom(*label);
    if (needed(0, _columns.size()) > _width)
        shrinkKeys();
    split();
    for (const GridBlock& block : _blocks)
        for (const TextGrid::Label* label : labels)
            makeRoom(*label, block);
}

void GridColumns::measureCells()
{
    for (std::size_t row = 0; row < _grid.rowCount; ++row)
        for (std::size_t column = 0; column < _columns.size(); ++column)
            measureCell(column, _grid.cell(row, column));
    for (Column& column : _columns) {
        column.numbers = std::max(column.numbers, column.whole + column.fraction);
        // A number is never cut, because its beginning is another number.
        column.width = std::max(column.width, column.numbers + column.marks);
    }
}

void GridColumns::measureCell(std::size_t column, const TextGrid::Cell& cell)
{
    Column& measured = _columns[column];
    const std::size_t width = widestLine(cell.text);
    const std::size_t mark = cell.mark.empty() ? 0 : terminalWidth(cell.mark);
    if (cell.isNumber) {
        measured.numbers = std::max(measured.numbers, width);
        measured.whole = std::max(measured.whole, cell.fraction ? width - *cell.fraction : 0);
        measured.fraction = std::max(measured.fraction, cell.fraction.value_or(0));
        measured.marks = std::max(measured.marks, mark);
    } else {
        widen(column, width + mark);
    }
}

void GridColumns::widen(std::size_t column, std::size_t width)
{
    _columns[column].width =
        std::max(_columns[column].width, std::min(width, _grid.columns[column].maximum));
}

/// Widens the columns below a label that is wider than them, as far as the line allows.
void GridColumns::makeRoom(const TextGrid::Label& label)
{
    const std::size_t wanted = widthOf(label);
    const std::size_t end = label.column + label.columns;
    if (label.columns == 1) {
        widen(label.column, wanted);
        return;
    }
    const std::size_t lines = (label.columns - 1) * kMargins;
    const std::size_t there = needed(label.column, end) - 1 - kMargins;
    const std::size_t most = std::min(wanted, _width / 2);
    if (most <= there || most <= lines)
        return;
    const std::size_t each = (most - there + label.columns - 1) / label.columns;
    for (std::size_t column = label.column; column < end; ++column)
        _columns[column].width += each;
}

/// Gives a label that continues in another block the free space of the line, because fewer of its
/// columns are in the block.
void GridColumns::makeRoom(const TextGrid::Label& label, const GridBlock& block)
{
    const auto begin = std::lower_bound(block.begin(), block.end(), label.column);
    const auto end = std::lower_bound(begin, block.end(), label.column + label.columns);
    if (begin == end || label.column < _grid.keyCount)
        return;
    const std::size_t used = width(block.data(), block.data() + block.size()) + 1 + kMargins;
    const std::size_t there = width(&*begin, &*begin + (end - begin));
    const std::size_t wanted = widthOf(label);
    if (wanted > there && _width > used)
        _columns[*(end - 1)].width += std::min(wanted - there, _width - used);
}

std::size_t GridColumns::needed(std::size_t begin, std::size_t end) const
{
    std::size_t sum = 1;
    for (std::size_t column = begin; column < end; ++column)
        sum += _columns[column].width + kMargins;
    return sum;
}

std::size_t GridColumns::width(const std::size_t* begin, const std::size_t* end) const
{
    std::size_t sum = 0;
    for (const std::size_t* column = begin; column != end; ++column)
        sum += _columns[*column].width + (column == begin ? 0 : kMargins);
    return sum;
}

/// Limits repeated key columns to half the width and leaves room for any number. The widest key is
/// wrapped.
void GridColumns::shrinkKeys()
{
    const std::size_t keys = std::min(_grid.keyCount, _columns.size());
    std::size_t number = 0;
    for (std::size_t column = keys; column < _columns.size(); ++column)
        number = std::max(number, _columns[column].numbers + _columns[column].marks + kMargins);
    const std::size_t most = std::min(_width / 2, _width - std::min(_width, number));
    while (needed(0, keys) > most) {
        const auto excess = [](const Column& column) {
            const std::size_t least = std::max(kNarrowest, column.numbers + column.marks);
            return column.width > least ? column.width : 0;
        };
        const auto widest = std::max_element(
            _columns.begin(), _columns.begin() + static_cast<std::ptrdiff_t>(keys),
            [&](const Column& left, const Column& right) { return excess(left) < excess(right); });
        if (keys == 0 || excess(*widest) == 0)
            return;
        --widest->width;
    }
}

void GridColumns::split()
{
    GridBlock keys(std::min(_grid.keyCount, _columns.size()));
    std::iota(keys.begin(), keys.end(), std::size_t{0});
    const std::size_t keyWidth = needed(0, keys.size());
    // A text that is wider than the space beside the keys is wrapped, unless there is hardly any
    // space.
    const std::size_t room = _width > keyWidth + kMargins ? _width - keyWidth - kMargins : 0;
    std::size_t used = keyWidth;
    _blocks.assign(1, keys);
    for (std::size_t i = keys.size(); i < _columns.size(); ++i) {
        Column& column = _columns[i];
        column.width =
            std::min(column.width, std::max({room, kNarrowest, column.numbers + column.marks}));
        const bool fits = used + column.width + kMargins <= _width;
        if (!fits && _blocks.back().size() > keys.size()) {
            _blocks.push_back(keys);
            used = keyWidth;
        }
        _blocks.back().push_back(i);
        used += column.width + kMargins;
    }
}
