#pragma once

#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "VexaFormat.h"
#include "render/CellFormat.h"
#include "render/CellKey.h"

/// What is known of one cell. Text and footnotes lie in the store, since few cells have any.
struct Cell
{
    /// Stands for no number.
    static constexpr double kNoValue = std::numeric_limits<double>::max();

    double value = kNoValue;
    VEXA_Format format = CellFormat::noFormat;
    std::uint32_t text = 0; ///< as CellStore::keepText gives it
    std::uint32_t footnotes : 31 = 0;
    std::uint32_t infinite : 1 = 0;
};

/// The cells of a table, by key.
///
/// There is a cell for each combination of leaves, and for any other key that is asked for. Those
/// of the leaves lie side by side, in pages that come into being when a cell of theirs is changed;
/// the others, which hardly a table has, lie apart, and so do all where leaves are beyond counting.
class CellStore
{
public:
    explicit CellStore(KeyLayout layout);

    const KeyLayout& layout() const { return _layout; }
    /// The cell, for changing; it stays where it is. A key that no leaves have gets a new one.
    Cell& at(std::string_view key);
    /// The cell; null if nothing was ever told of it.
    Cell* find(std::string_view key);
    /// The same by the cell's number, if cells have one.
    Cell* find(std::uint64_t number);
    /// Whether the cells of leaves can be found by their numbers.
    bool isNumbered() const { return _isNumbered; }

    /// Keep what cells refer to by number; 0 stands for nothing.
    std::uint32_t keepText(std::string_view text);
    std::uint32_t keepFootnotes(std::vector<int> footnotes);
    const std::string& textOf(const Cell& cell) const { return _texts[cell.text]; }
    const std::vector<int>& footnotesOf(const Cell& cell) const
    {
        return _footnotes[cell.footnotes];
    }

private:
    static constexpr std::uint64_t kPageCells = 1024;

    Cell& numbered(std::uint64_t number);

    KeyLayout _layout;
    bool _isNumbered;
    std::vector<std::unique_ptr<Cell[]>> _pages;
    std::map<std::string, Cell, std::less<>> _others;
    std::vector<std::string> _texts;
    std::vector<std::vector<int>> _footnotes;
};
