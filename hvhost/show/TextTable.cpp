#include "hvhost/show/TextTable.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <ostream>

#include "FormattedText.h"
#include "base/NumberText.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/show/ResultTable.h"
#include "report/document/ShownText.h"
#include "report/text/TextGrid.h"

namespace {

constexpr std::size_t kEdges = 4; ///< a line and a blank on each side

constexpr int kShownDigits = 7;

/// A number with seven significant digits; a large number with its whole units. A missing number is
/// a period. A missing text is blank, because a period may be a text.
std::string cellText(const std::optional<std::string>& cell, const ResultTable::Column& column)
{
    if (!cell)
        return column.isNumber() ? "." : "";
    if (column.storage != CFField::Real)
        return *cell;
    return base::roundedNumber(std::strtod(cell->c_str(), nullptr), kShownDigits);
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

TextForm textForm(const TextRequest& asked, const std::string& form, bool toFile)
{
    const char* const option = asked.width > 0 ? "--width" : "--group-digits";
    if ((asked.width > 0 || asked.groupsDigits) && form != "text")
        throw CommandFault(ExitStatus::Usage,
                           std::string(option) + " is for text, and this is " + form,
                           "leave it out, or choose --format text");
    std::size_t width = toFile ? kDefaultWidth : outputWidth();
    if (asked.width > 0)
        width = static_cast<std::size_t>(asked.width);
    return {width, asked.groupsDigits};
}

void printTextTable(const ResultTable& table, const TextForm& form, std::ostream& out)
{
    TextGrid grid;
    grid.keyCount = table.keyCount;
    grid.headerRows = 1;
    for (const ResultTable::Column& column : table.columns) {
        grid.header.push_back({column.name, {}, 0, grid.columns.size()});
        grid.columns.push_back({1, form.width - std::min(form.width, kEdges)});
    }
    grid.rowCount = table.rows.size();
    grid.cell = [&](std::size_t row, std::size_t column) {
        const ResultTable::Column& of = table.columns[column];
        TextGrid::Cell cell{cellText(table.rows[row][column], of), {}, of.isNumber()};
        if (of.storage == CFField::Real) {
            cell.fraction = plainFraction(cell.text);
            if (cell.text.size() > 1)
                std::replace(cell.text.begin(), cell.text.end(), '.', decimalSign());
        }
        if (form.groupsDigits && of.isNumber())
            cell.text = withDigitGroups(cell.text);
        return cell;
    };
    drawTextGrid(grid, form.width, out);
}
