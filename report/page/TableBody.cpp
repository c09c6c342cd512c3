#include "report/page/TableBody.h"

#include <algorithm>
#include <ostream>

#include "FormattedText.h"
#include "Translation.h"
#include "VexaCases.h"
#include "base/NumberText.h"
#include "report/document/PageText.h"
#include "report/document/ShownText.h"

namespace {

/// The value of a cell for copying, if its text is not sufficient. Spreadsheets read a date better
/// as shown than as seconds, and a missing value as an empty cell.
std::string valueOf(const TnContent& content)
{
    if (!content.number)
        return content.text.find("\\n") == std::string::npos
                   ? ""
                   : " data-text=\"" + escaped(content.text) + "\"";
    if (*content.number == kSystemMissing)
        return " data-value=\"\"";
    const std::string value = base::shortestNumber(*content.number);
    if (value == shownNumber(content))
        return {};
    return " data-value=\"" + value + "\"" + (isDateFormat(content.format) ? " data-shown" : "");
}

/// The missing part of a fraction, to align the decimal signs.
std::string padding(const TnContent& content, std::size_t longest)
{
    const std::size_t own = fractionOf(content.text, content.format).value_or(longest);
    if (own >= longest)
        return {};
    const std::string zeros(longest - own, '0');
    return " data-pad=\"" + (own == 0 ? "." + zeros.substr(1) : zeros) + "\"";
}

class RowWriter
{
public:
    RowWriter(std::ostream& out, TableGrid& grid) : _out(out), _grid(grid), _address(grid.layer)
    {
        if (grid.named)
            for (std::size_t column = 0; column < grid.columns.size(); ++column)
                _columnNames.push_back(grid.columns.names(column, grid.columnPrefix()));
        for (std::size_t column = 0; column < grid.columns.size(); ++column)
            _fractions.push_back(longestFraction(column));
    }

    void write()
    {
        bool isAfterSpan = true;
        for (std::size_t row = 0; row < _grid.rows.size(); ++row) {
            const std::size_t span = outerSpan(row);
            if (span > 1 || (span == 1 && isAfterSpan))
                _out << (row > 0 ? "</tbody>\n<tbody>\n" : "<tbody>\n");
            if (span > 0)
                isAfterSpan = span > 1;
            writeRow(row);
        }
        if (_grid.rows.size() > 0)
            _out << "</tbody>\n";
    }

private:
    /// The longest fraction in a column; only the first rows count.
    std::size_t longestFraction(std::size_t column)
    {
        constexpr std::size_t kLooked = 1000;
        std::size_t longest = 0;
        _grid.columns.setAddress(column, _address);
        for (std::size_t row = 0; row < std::min(_grid.rows.size(), kLooked); ++row) {
            _grid.rows.setAddress(row, _address);
            const std::optional<OutputCell> cell = _grid.table.cells.at(_address);
            if (cell && cell->content.number)
                longest = std::max(
                    longest, fractionOf(cell->content.text, cell->content.format).value_or(0));
        }
        return longest;
    }

    /// The number of rows of the outermost label that begins here; 0 inside one.
    std::size_t outerSpan(std::size_t row) const
    {
        if (_grid.rows.levels() == 0)
            return row == 0 ? 1 : 0;
        const std::optional<AxisLabel> label = _grid.rows.labelAt(row, 0);
        return label ? label->span : 0;
    }

    /// The classes that scripts need to sort: groups are sorted by themselves, with the total last.
    std::string rowClass(std::size_t row) const
    {
        const bool isFirst = _grid.rows.beginsGroup(row);
        if (!isTotal(row))
            return isFirst ? " class=\"first\"" : "";
        return isFirst ? " class=\"first total\"" : " class=\"total\"";
    }

    bool isTotal(std::size_t row) const
    {
        for (int level = _grid.rows.levels(); level-- > 0;)
            if (const std::optional<AxisLabel> label = _grid.rows.labelAt(row, level))
                return label->span == 1 && label->text->text == _total;
        return false;
    }

    void writeRow(std::size_t row)
    {
        _out << "<tr" << rowClass(row) << ">";
        for (int level = 0; level < _grid.rows.levels(); ++level)
            writeLabel(row, level);
        _rowNames = _grid.named ? _grid.rows.names(row, _grid.rowPrefix()) : "";
        _grid.rows.setAddress(row, _address);
        for (std::size_t column = 0; column < _grid.columns.size(); ++column)
            writeCell(column);
        _out << "</tr>\n";
    }

    void writeLabel(std::size_t row, int level)
    {
        const std::optional<AxisLabel> label = _grid.rows.labelAt(row, level);
        if (!label)
            return;
        std::string spans;
        if (label->span > 1)
            spans += " rowspan=\"" + std::to_string(label->span) + "\"";
        if (label->depth > 1)
            spans += " colspan=\"" + std::to_string(label->depth) + "\"";
        _out << headerCell(_grid, *label, "row", TableAxis::name(_grid.rowPrefix(), row, level),
                           spans);
    }

    void writeCell(std::size_t column)
    {
        _grid.columns.setAddress(column, _address);
        _out << "<td";
        if (_grid.named)
            _out << " headers=\"" << _rowNames
                 << (_rowNames.empty() || _columnNames[column].empty() ? "" : " ")
                 << _columnNames[column] << "\"";
        const std::optional<OutputCell> cell = _grid.table.cells.at(_address);
        if (cell)
            writeContent(*cell, _fractions[column]);
        else
            _out << "></td>";
    }

    void writeContent(const OutputCell& cell, std::size_t fraction)
    {
        const TnContent& content = cell.content;
        _out << valueOf(content);
        if (content.number)
            _out << padding(content, fraction) << ">" << escaped(shownNumber(content));
        else
            _out << " class=\"text\">" << (content.text.empty() ? "" : cellText(content.text));
        _out << _grid.notes.marks(cell.notes) << "</td>";
    }

    std::ostream& _out;
    TableGrid& _grid;
    OutputCells::Address _address;
    std::vector<std::string> _columnNames;
    std::vector<std::size_t> _fractions; ///< the longest one, by column
    std::string _rowNames;
    std::string _total = translate("Total");
};

} // namespace

void writeTableBody(std::ostream& out, TableGrid& grid)
{
    RowWriter(out, grid).write();
}
