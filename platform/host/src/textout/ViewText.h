#pragma once

struct OutputView;
class TextPage;

/// Writes an interactive view: its title, where it comes from, and what it shows as an outline of
/// keys and values, in which records and charts are tables.
void writeView(const OutputView& view, TextPage& page);
