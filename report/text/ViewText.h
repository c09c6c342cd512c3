#pragma once

struct OutputView;
class TextPage;

/// Writes an interactive view: its title, its source, and its content as an outline of keys and
/// values, with records and charts as tables.
void writeView(const OutputView& view, TextPage& page);
