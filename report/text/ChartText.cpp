#include "report/text/ChartText.h"

#include <algorithm>
#include <stdexcept>

#include "OutputTree.h"
#include "Translation.h"
#include "report/charts/ChartSpec.h"
#include "report/document/ShownText.h"
#include "report/text/BarText.h"
#include "report/text/TextGrid.h"
#include "report/text/TextPage.h"

namespace {

constexpr std::size_t kWidestBar = 30;

/// The value of a field in a row; null if it is missing.
const nlohmann::ordered_json& valueOf(const nlohmann::ordered_json& row, const std::string& field)
{
    static const nlohmann::ordered_json none;
    const auto found = row.find(field);
    return found != row.end() ? *found : none;
}

std::string textOf(const nlohmann::ordered_json& value, bool groupsDigits)
{
    const std::string text = jsonCellText(value);
    return groupsDigits && value.is_number() ? withDigitGroups(text) : text;
}

/// A value, or both ends of a bar.
TextGrid::Cell cellOf(const nlohmann::ordered_json& row, const ChartPlot::Column& column,
                      bool groupsDigits)
{
    const nlohmann::ordered_json& value = valueOf(row, column.field);
    if (column.endField.empty()) {
        const auto fraction = value.is_number() ? plainFraction(jsonCellText(value)) : std::nullopt;
        return {textOf(value, groupsDigits), {}, value.is_number(), fraction};
    }
    return {textOf(value, groupsDigits) + " – " +
                textOf(valueOf(row, column.endField), groupsDigits),
            {},
            true};
}

/// Writes one plot as a table; the last column has the bars.
class PlotWriter
{
public:
    PlotWriter(const ChartPlot& plot, TextPage& page)
        : _plot(plot), _page(page), _rows(std::min(plot.rows.size(), page.options().chartRows)),
          _scale(std::min(kWidestBar, page.options().width / 3))
    {
    }
    void write();

private:
    double barValue(std::size_t row) const;
    TextGrid grid();

    const ChartPlot& _plot;
    TextPage& _page;
    std::size_t _rows;
    BarScale _scale;
};

/// No bar for a value that is not a number.
double PlotWriter::barValue(std::size_t row) const
{
    const auto& value = valueOf(*_plot.rows[row], _plot.columns[*_plot.bars].field);
    return value.is_number() ? value.get<double>() : 0;
}

TextGrid PlotWriter::grid()
{
    TextGrid grid;
    grid.headerRows = 1;
    for (const ChartPlot::Column& column : _plot.columns) {
        grid.header.push_back({column.title, {}, 0, grid.columns.size()});
        grid.columns.emplace_back();
    }
    if (_plot.bars) {
        for (std::size_t row = 0; row < _rows; ++row)
            _scale.include(barValue(row));
        grid.header.push_back({{}, {}, 0, grid.columns.size()});
        grid.columns.emplace_back();
    }
    grid.rowCount = _rows;
    grid.cell = [this](std::size_t row, std::size_t column) {
        return column < _plot.columns.size()
                   ? cellOf(*_plot.rows[row], _plot.columns[column], _page.options().groupsDigits)
                   : TextGrid::Cell{_scale.bar(barValue(row)), {}, false};
    };
    return grid;
}

void PlotWriter::write()
{
    if (!_plot.title.empty())
        _page.write(_plot.title);
    drawTextGrid(grid(), _page.options().width, _page.out());
    // Without this note an incomplete table would look complete.
    const std::size_t rest = _plot.rows.size() - _rows;
    if (rest > 0)
        _page.write("… " + translate("Further rows") + ": " + std::to_string(rest));
}

/// Writes each title once: the description may repeat it.
void writeHead(const OutputChart& chart, const ChartSpec& spec, TextPage& page)
{
    const std::string& title = chart.description.empty() ? spec.title() : chart.description;
    if (!title.empty())
        page.write(title, TextPage::Style::Bold);
    if (spec.title() != title && !spec.title().empty())
        page.write(spec.title());
    if (spec.description() != title && spec.description() != spec.title() &&
        !spec.description().empty())
        page.write(spec.description());
}

} // namespace

void writePlot(const ChartPlot& plot, TextPage& page)
{
    PlotWriter(plot, page).write();
}

void writeChart(const OutputChart& chart, TextPage& page)
{
    page.beginBlock();
    try {
        const ChartSpec spec(chart.templateJson);
        writeHead(chart, spec, page);
        for (const ChartPlot& plot : spec.plots())
            writePlot(plot, page);
    } catch (const std::invalid_argument&) {
        if (!chart.description.empty())
            page.write(chart.description, TextPage::Style::Bold);
        page.write(translate("This chart cannot be drawn."), TextPage::Style::Warning);
    }
    for (const auto& [name, text] : chart.geoJson)
        page.write(name, TextPage::Style::Plain, translate("Map") + ": ");
}
