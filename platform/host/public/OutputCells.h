#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "HostExport.h"
#include "TnCellText.h"
#include "VexaFormat.h"

/// A cell of a table: its content and the indexes of its footnotes in the table's list.
struct OutputCell
{
    TnContent content;      ///< a value with its format, or a text
    std::vector<int> notes; ///< indexes in the table's list of notes
};

/// The cells of a table, each at one category of every dimension. A number takes 16 bytes and gets
/// its text on request. Equal texts are stored once. An address has a leaf of each dimension, in
/// the order of their declaration. One thread at a time.
class HOST_API OutputCells
{
public:
    /// The number of a category of each dimension, in the order of the dimensions.
    using Address = std::vector<int>;

    OutputCells() = default;
    OutputCells(OutputCells&&) = default;
    OutputCells& operator=(OutputCells&&) = default;

    /// The cell at an address; no result if it has neither content nor notes.
    std::optional<OutputCell> at(const Address& address) const;
    /// The number of cells with content.
    std::size_t size() const { return _count; }

    /// For the host: sets a number. All addresses must have the same length; call clear() before
    /// using another.
    void setNumber(const Address& address, double number, const VEXA_Format& format);
    /// For the host: sets any content.
    void setContent(const Address& address, TnContent content);
    /// For the host: adds a footnote by its index in the table's list.
    void addNote(const Address& address, int note);
    /// For the host: removes all cells.
    void clear();

private:
    /// `aside` is kEmpty, kNumber, or the index of other content.
    struct Slot
    {
        double number = 0;
        VEXA_Format format;
        std::uint32_t aside = 0;
    };
    /// The cells along the last dimension, starting with the first leaf that has one.
    struct Line
    {
        int first = 0;
        std::vector<Slot> slots;
    };
    using Place = std::pair<std::uint32_t, int>; ///< index of a line, and a leaf in it

    std::optional<Place> find(const Address& address) const;
    std::uint32_t lineAt(const Address& address);
    Slot& slotAt(const Address& address);
    std::uint32_t keep(TnContent content);

    std::vector<std::vector<std::uint32_t>> _levels; ///< by leaf, index of the next level; 0: none
    std::deque<Line> _lines;
    std::deque<TnContent> _contents;
    std::unordered_map<std::string_view, std::uint32_t> _contentOfText;
    std::map<Place, std::vector<int>> _notes;
    std::size_t _count = 0;
};
