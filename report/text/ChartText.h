#pragma once

struct ChartPlot;
struct OutputChart;
class TextPage;

/// Writes a chart: its title and description, and its data as tables, with bars if the chart has
/// bars.
void writeChart(const OutputChart& chart, TextPage& page);

/// Writes one view of a chart, or other rows of data, as a table.
void writePlot(const ChartPlot& plot, TextPage& page);
