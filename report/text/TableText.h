#pragma once

struct OutputTable;
class TextPage;

/// Writes a pivot table: its title, a separate table for each combination of its layers, its
/// caption and its footnotes.
void writeTable(const OutputTable& table, TextPage& page);
