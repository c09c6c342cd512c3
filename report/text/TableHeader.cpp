#include "report/text/TableHeader.h"

#include <algorithm>

#include "report/document/ShownText.h"
#include "report/text/TerminalText.h"

namespace {

/// Whether the corner names a row dimension. A dimension without labels has its own name label.
bool isNamed(const TableAxis::Head& head)
{
    return !head.dimension->hidesName && !head.dimension->hidesChildren;
}

class HeaderBuilder
{
public:
    HeaderBuilder(TextGrid& grid, const OutputTable& table, const TableAxis& rows,
                  const TableAxis& columns, const NoteSigns& signs)
        : _grid(grid), _table(table), _heads(rows.heads()), _columns(columns), _signs(signs),
          _levels(static_cast<std::size_t>(columns.levels())),
          _hasNames(std::any_of(_heads.begin(), _heads.end(), isNamed))
    {
    }
    void build();

private:
    void corner();
    void rowNames(std::size_t top);
    void labels(std::size_t level);
    void add(const TextGrid::Label& label);

    TextGrid& _grid;
    const OutputTable& _table;
    std::vector<TableAxis::Head> _heads;
    const TableAxis& _columns;
    const NoteSigns& _signs;
    std::size_t _levels; ///< of the columns
    bool _hasNames;
};

void HeaderBuilder::add(const TextGrid::Label& label)
{
    if (label.rows > 0 && label.columns > 0)
        _grid.header.push_back(label);
}

void HeaderBuilder::build()
{
    const std::size_t inCorner = (_table.cornerText ? 1U : 0U) + (_hasNames ? 1U : 0U);
    _grid.headerRows = std::max(_levels, inCorner);
    corner();
    if (_levels == 0)
        add({{}, {}, 0, _grid.keyCount, _grid.headerRows, _columns.size()});
    for (std::size_t level = 0; level < _levels; ++level)
        labels(level);
}

void HeaderBuilder::corner()
{
    const std::size_t textRows =
        _table.cornerText || !_hasNames ? _grid.headerRows - (_hasNames ? 1 : 0) : 0;
    add({_table.cornerText ? _table.cornerText->text : std::string(),
         {},
         0,
         0,
         textRows,
         _grid.keyCount});
    if (_hasNames)
        rowNames(textRows);
}

void HeaderBuilder::rowNames(std::size_t top)
{
    std::size_t column = 0;
    for (const TableAxis::Head& head : _heads) {
        TextGrid::Label label{
            {}, {}, top, column, _grid.headerRows - top, static_cast<std::size_t>(head.levels)};
        if (isNamed(head)) {
            label.text = head.dimension->name.text;
            label.mark = _signs.signs(head.dimension->notes);
        }
        add(label);
        column += label.columns;
    }
}

/// The header ends with the labels of the last level.
void HeaderBuilder::labels(std::size_t level)
{
    for (std::size_t column = 0; column < _columns.size(); ++column) {
        const std::optional<AxisLabel> label = _columns.labelAt(column, static_cast<int>(level));
        if (!label)
            continue;
        const auto depth = static_cast<std::size_t>(label->depth);
        add({shownText(*label->text), _signs.signs(*label->notes), level, _grid.keyCount + column,
             level + depth == _levels ? _grid.headerRows - level : depth, label->span});
    }
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

std::size_t keyColumns(const OutputTable& table, const TableAxis& rows)
{
    return std::max<std::size_t>(static_cast<std::size_t>(rows.levels()), table.cornerText ? 1 : 0);
}

void setHeader(TextGrid& grid, const OutputTable& table, const TableAxis& rows,
               const TableAxis& columns, const NoteSigns& signs)
{
    HeaderBuilder(grid, table, rows, columns, signs).build();
}
