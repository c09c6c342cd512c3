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

/// How to show one cell.
struct CellStyle
{
    VEXA_Format format = CellFormat::noFormat;
    const std::vector<int>* footnotes = nullptr; ///< indexes in the table's list; null for none
    bool isInfinite = false;
};

/// The formats of a table. Each entry applies to one cell or to all cells of a pattern.
///
/// A pattern may match more cells than fit into memory, so it is stored as a pattern. The style of
/// a cell is computed when the cell is shown.
class CellStyles
{
public:
    /// The layout is borrowed.
    explicit CellStyles(const KeyLayout& layout) : _layout(layout) {}
    void read(const JsonValue& formats);

    /// Whether there are no formats.
    bool isEmpty() const { return _patterns.empty(); }
    /// The style of the cell with that key. This object owns the footnotes.
    CellStyle of(std::string_view key);

private:
    /// What an entry sets for each matching cell.
    struct Entry
    {
        VEXA_Format format;
        std::vector<int> footnotes;
        bool isInfinite;
        bool isPattern;
    };
    /// Entries with wildcards in the same dimensions, by key. In the key all digits of those
    /// dimensions are replaced by "*".
    struct Pattern
    {
        std::vector<const KeyLayout::Segment*> wildcards; ///< empty for entries of single cells
        std::unordered_map<std::string, std::vector<std::size_t>> entries;
    };

    void add(std::string_view index, Entry entry);
    void addPattern(std::string_view index);
    void collect(const Pattern& pattern, std::string_view key);
    void apply(const Entry& entry, CellStyle& style) const;

    const KeyLayout& _layout;
    std::vector<Entry> _entries;
    std::map<std::vector<std::size_t>, Pattern> _patterns; ///< by the dimensions with wildcards
    /// Working space for one cell.
    std::string _probe;
    std::vector<std::size_t> _found;
};
