#pragma once

struct OutputTable;
class TextPage;

/// Writes a pivot table: its title, each combination of its layers as a table of its own, its
/// caption and its footnotes.
void writeTable(const OutputTable& table, TextPage& page);
