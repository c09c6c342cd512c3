#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "bridge/JsonValue.h"
#include "render/CellFormat.h"
#include "render/CellKey.h"

/// How one cell is shown.
struct CellStyle
{
    VEXA_Format format = CellFormat::noFormat;
    const std::vector<int>* footnotes = nullptr; ///< numbers in the table's list; null for none
    bool isInfinite = false;
};

/// The formats of a table: each entry speaks of one cell, or of all cells of a pattern.
///
/// A pattern may match more cells than memory has room for, so it is kept as a pattern. The
/// style of a cell is put together when the cell is shown.
class CellStyles
{
public:
    /// The layout is borrowed.
    explicit CellStyles(const KeyLayout& layout) : _layout(layout) {}
    void read(const JsonValue& formats);

    /// Whether all cells are shown alike.
    bool isEmpty() const { return _patterns.empty(); }
    /// The style of the cell with that key. The footnotes belong to this object.
    CellStyle of(std::string_view key);

private:
    /// What an entry gives to each cell that it speaks of.
    struct Entry
    {
        VEXA_Format format;
        std::vector<int> footnotes;
        bool isInfinite;
        bool isPattern;
    };
    /// Entries with wildcards in the same dimensions, by their keys with all digits there replaced.
    struct Pattern
    {
        std::vector<const KeyLayout::Segment*> wildcards; ///< none for entries of single cells
        std::unordered_map<std::string, std::vector<std::size_t>> entries;
    };

    void add(std::string_view index, Entry entry);
    void addPattern(std::string_view index);
    void collect(const Pattern& pattern, std::string_view key);
    void apply(const Entry& entry, CellStyle& style) const;

    const KeyLayout& _layout;
    std::vector<Entry> _entries;
    std::map<std::vector<std::size_t>, Pattern> _patterns; ///< by the dimensions with wildcards
    /// Space for the work on one cell.
    std::string _probe;
    std::vector<std::size_t> _found;
};
