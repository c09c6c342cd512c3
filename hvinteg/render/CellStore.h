#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "render/CellKey.h"

/// The content of one cell. Its text lies in the store, since few cells have one.
struct Cell
{
    /// Stands for no number.
    static constexpr double kNoValue = std::numeric_limits<double>::max();

    double value = kNoValue;
    std::uint32_t text = 0; ///< as CellStore::keepText gives it
};

/// The cells of a table, by key. Only cells that the document fills take memory.
///
/// Cells of leaves have numbers. Those of a run lie side by side in pages; single ones, which may
/// be anywhere in a huge table, lie apart. So do cells whose key belongs to no leaves, and all
/// cells if the table has more of them than there are numbers.
class CellStore
{
public:
    explicit CellStore(KeyLayout layout);

    const KeyLayout& layout() const { return _layout; }
    /// The cell, for changing; new if it is not there yet. The reference is good until the next
    /// cell is asked for.
    Cell& at(std::string_view key);
    /// The same for a cell whose neighbours come next.
    Cell& inRun(std::string_view key);
    /// The cell; null if the document says nothing of it.
    const Cell* find(std::string_view key) const;
    /// The same by the cell's number, if cells have one.
    const Cell* find(std::uint64_t number) const;
    /// Whether the cells of leaves can be found by their numbers.
    bool isNumbered() const { return _layout.cellCount() != CellKey::kNowhere; }

    /// Keeps a text and returns its number: 0 for an empty text.
    std::uint32_t keepText(std::string_view text);
    const std::string& textOf(const Cell& cell) const { return _texts[cell.text]; }

private:
    static constexpr std::uint64_t kPageCells = 64;
    using Page = std::unique_ptr<Cell[]>;

    Cell& single(std::string_view key);
    Cell* pageOf(std::uint64_t number) const;
    Cell* addPage(std::uint64_t number);

    KeyLayout _layout;
    std::unordered_map<std::uint64_t, Page> _pages;
    std::map<std::uint64_t, Cell> _scattered;
    std::map<std::string, Cell, std::less<>> _others;
    std::vector<std::string> _texts;
    /// The page that was found last, which mostly has the next cell too.
    mutable std::uint64_t _lastNumber = CellKey::kNowhere;
    mutable Cell* _lastPage = nullptr;
};
