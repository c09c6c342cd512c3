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

/// The content of one cell. The store keeps its text, because few cells have one.
struct Cell
{
    /// Marks a cell without a number.
    static constexpr double kNoValue = std::numeric_limits<double>::max();

    double value = kNoValue;
    std::uint32_t text = 0; ///< number from CellStore::keepText
};

/// The cells of a table, by key. Only cells that the document contains take memory.
///
/// Cells of leaves have numbers. Cells of a run are stored in pages; single cells, which may be
/// anywhere in a huge table, are stored separately. So are cells whose key is invalid, and all
/// cells if the table has too many to number.
class CellStore
{
public:
    explicit CellStore(KeyLayout layout);

    const KeyLayout& layout() const { return _layout; }
    /// Returns the cell for changes and creates it if necessary. The reference is valid until the
    /// next call for a cell.
    Cell& at(std::string_view key);
    /// The same for a cell that belongs to a run.
    Cell& inRun(std::string_view key);
    /// The cell; null if the document does not contain it.
    const Cell* find(std::string_view key) const;
    /// The same by the number of the cell.
    const Cell* find(std::uint64_t number) const;
    /// Whether the cells of leaves have numbers.
    bool isNumbered() const { return _layout.cellCount() != CellKey::kNowhere; }

    /// Stores a text and returns its number; 0 for an empty text.
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
    /// The page that was found last; it usually contains the next cell too.
    mutable std::uint64_t _lastNumber = CellKey::kNowhere;
    mutable Cell* _lastPage = nullptr;
};
