#pragma once

struct OutputChart;
class TextPage;

/// Writes a chart: its title and description, and the data that it draws as tables, with bars where
/// the chart has bars.
void writeChart(const OutputChart& chart, TextPage& page);
