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

/// A cell of a table: what it says, and its footnotes by their places in the table's list.
struct OutputCell
{
    TnContent content;
    std::vector<int> notes;
};

/// The cells of a table, each at one category of every dimension. Numbers take 16 bytes and have no
/// text until it is asked for; equal texts are kept once. Addresses name a leaf of each dimension,
/// in the order in which the dimensions were declared. One thread at a time.
class HOST_API OutputCells
{
public:
    using Address = std::vector<int>;

    OutputCells() = default;
    OutputCells(OutputCells&&) = default;
    OutputCells& operator=(OutputCells&&) = default;

    /// Nothing if the cell has neither content nor notes.
    std::optional<OutputCell> at(const Address& address) const;
    /// Cells that have a content.
    std::size_t size() const { return _count; }

    /// Host side. All addresses have the same length; clear() before one of another.
    void setNumber(const Address& address, double number, const VEXA_Format& format);
    void setContent(const Address& address, TnContent content);
    void addNote(const Address& address, int note);
    void clear();

private:
    /// `aside` is kEmpty, kNumber, or the place of a content that is more than a number.
    struct Slot
    {
        double number = 0;
        VEXA_Format format;
        std::uint32_t aside = 0;
    };
    /// The cells along the last dimension, from the first leaf that has one.
    struct Line
    {
        int first = 0;
        std::vector<Slot> slots;
    };
    using Place = std::pair<std::uint32_t, int>; ///< of a line, and of a leaf in it

    std::optional<Place> find(const Address& address) const;
    std::uint32_t lineAt(const Address& address);
    Slot& slotAt(const Address& address);
    std::uint32_t keep(TnContent content);

    std::vector<std::vector<std::uint32_t>> _levels; ///< by leaf, what is below; 0 for nothing
    std::deque<Line> _lines;
    std::deque<TnContent> _contents;
    std::unordered_map<std::string_view, std::uint32_t> _contentOfText;
    std::map<Place, std::vector<int>> _notes;
    std::size_t _count = 0;
};
