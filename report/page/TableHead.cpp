#include "report/page/TableHead.h"

#include <algorithm>
#include <ostream>

#include "report/document/PageText.h"
#include "report/document/ShownText.h"

namespace {

std::string spans(std::size_t rows, std::size_t columns)
{
    return (rows > 1 ? " rowspan=\"" + std::to_string(rows) + "\"" : "") +
           (columns > 1 ? " colspan=\"" + std::to_string(columns) + "\"" : "");
}

bool isNamed(const TableAxis::Head& head)
{
    return head.levels > 0 && !head.dimension->hidesName && !head.dimension->hidesChildren;
}

/// Lays out the head: the larger number of rows of column labels and corner.
class HeadWriter
{
public:
    HeadWriter(std::ostream& out, TableGrid& grid)
        : _out(out), _grid(grid), _heads(grid.rows.heads()),
          _namesRows(std::any_of(_heads.begin(), _heads.end(), isNamed)),
          _hasCorner(grid.table.cornerText && grid.rows.levels() > 0)
    {
        const int corner = (_namesRows ? 1 : 0) + (_hasCorner ? 1 : 0);
        _height = std::max(grid.columns.levels(), corner);
    }

    void write()
    {
        if (_height == 0)
            return;
        _out << "<thead>\n";
        for (int row = 0; row < _height; ++row)
            writeRow(row);
        _out << "</thead>\n";
    }

private:
    void writeRow(int row)
    {
        _out << "<tr>";
        const int cornerHeight = _height - (_namesRows ? 1 : 0);
        if (row == 0 && cornerHeight > 0 && _grid.rows.levels() > 0)
            writeCorner(cornerHeight);
        if (row == _height - 1 && _namesRows)
            for (const TableAxis::Head& head : _heads)
                writeName(head);
        if (row < _grid.columns.levels())
            writeLabels(row);
        else if (row == 0 && _grid.columns.size() > 0)
            _out << "<td class=\"unlabelled\""
                 << spans(static_cast<std::size_t>(_height), _grid.columns.size()) << "></td>";
        _out << "</tr>\n";
    }

    void writeCorner(int height)
    {
        const auto rows = static_cast<std::size_t>(height);
        const auto columns = static_cast<std::size_t>(_grid.rows.levels());
        _out << "<td class=\"corner\"" << spans(rows, columns) << ">";
        if (_hasCorner)
            _out << isolated(_grid.table.cornerText->text);
        _out << "</td>";
    }

    void writeName(const TableAxis::Head& head)
    {
        if (head.levels == 0)
            return;
        const auto levels = static_cast<std::size_t>(head.levels);
        if (!isNamed(head)) {
            _out << "<td" << spans(1, levels) << "></td>";
            return;
        }
        _out << "<th class=\"stub\" scope=\"" << (levels > 1 ? "colgroup" : "col") << "\""
             << spans(1, levels) << ">" << labelText(head.dimension->name.text)
             << _grid.notes.marks(head.dimension->notes) << "</th>";
    }

    // The lowest labels extend to the body if the corner has more rows.
    void writeLabels(int level)
    {
        const TableAxis& columns = _grid.columns;
        for (std::size_t at = 0; at < columns.size();) {
            std::optional<AxisLabel> label = columns.labelAt(at, level);
            if (!label) {
                ++at;
                continue;
            }
            const bool isLowest = level + label->depth == columns.levels();
            label->depth += isLowest ? _height - columns.levels() : 0;
            const bool isColumn = isLowest && label->span == 1;
            const std::string column = " data-column=\"" + std::to_string(at) + "\"" +
                                       (_grid.hasWords(at) ? " class=\"words\"" : "");
            _out << headerCell(_grid, *label, "col",
                               TableAxis::name(_grid.columnPrefix(), at, level),
                               spans(static_cast<std::size_t>(label->depth), label->span) +
                                   (isColumn ? column : ""));
            at += label->span;
        }
    }

    std::ostream& _out;
    TableGrid& _grid;
    std::vector<TableAxis::Head> _heads;
    bool _namesRows;
    bool _hasCorner;
    int _height = 0;
};

} // namespace

std::string headerCell(TableGrid& grid, const AxisLabel& label, const std::string& scope,
                       const std::string& name, const std::string& more)
{
    std::string cell = "<th";
    if (grid.named)
        cell += " id=\"" + name + "\"";
    cell += " scope=\"" + scope + (label.span > 1 ? "group" : "") + "\"" + more + ">";
    return cell + labelText(shownText(*label.text)) + grid.notes.marks(*label.notes) + "</th>";
}

bool TableGrid::hasWords(std::size_t column) const
{
    constexpr std::size_t kLooked = 20;
    OutputCells::Address address = layer;
    columns.setAddress(column, address);
    for (std::size_t row = 0; row < std::min(rows.size(), kLooked); ++row) {
        rows.setAddress(row, address);
        if (const std::optional<OutputCell> cell = table.cells.at(address))
            return !cell->content.number;
    }
    return false;
}

void writeTableHead(std::ostream& out, TableGrid& grid)
{
    HeadWriter(out, grid).write();
}
