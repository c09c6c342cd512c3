#include "OutputCells.h"

#include <algorithm>

#include "TnValues.h"

namespace {

/// Values of a slot's `aside`; from kFirstContent on it is the index of a content.
constexpr std::uint32_t kEmpty = 0;
constexpr std::uint32_t kNumber = 1;
constexpr std::uint32_t kFirstContent = 2;

bool isSame(const TnContent& left, const TnContent& right)
{
    return left.text == right.text && left.key == right.key && left.helpId == right.helpId &&
           left.number == right.number && left.format == right.format;
}

} // namespace

std::optional<OutputCells::Place> OutputCells::find(const Address& address) const
{
    std::uint32_t below = _lines.empty() ? 0 : 1;
    for (std::size_t d = 0; d + 1 < address.size() && below != 0; ++d) {
        const std::vector<std::uint32_t>& level = _levels[below - 1];
        const auto leaf = static_cast<std::size_t>(address[d]);
        below = leaf < level.size() ? level[leaf] : 0;
    }
    if (below == 0 || address.empty())
        return std::nullopt;
    return Place{below - 1, address.back()};
}

// Levels and lines are numbered from 1 in the order of their creation. The root is the first level,
// or the only line.
std::uint32_t OutputCells::lineAt(const Address& address)
{
    if (_lines.empty() && address.size() == 1)
        _lines.emplace_back();
    if (_levels.empty() && address.size() > 1)
        _levels.emplace_back();
    std::uint32_t below = 1;
    for (std::size_t d = 0; d + 1 < address.size(); ++d) {
        const auto leaf = static_cast<std::size_t>(address[d]);
        const std::uint32_t level = below - 1;
        if (_levels[level].size() <= leaf)
            _levels[level].resize(leaf + 1, 0);
        if (_levels[level][leaf] == 0) {
            const bool toLine = d + 2 == address.size();
            if (toLine)
                _lines.emplace_back();
            else
                _levels.emplace_back();
            _levels[level][leaf] =
                static_cast<std::uint32_t>(toLine ? _lines.size() : _levels.size());
        }
        below = _levels[level][leaf];
    }
    return below - 1;
}

OutputCells::Slot& OutputCells::slotAt(const Address& address)
{
    Line& line = _lines[lineAt(address)];
    const int leaf = address.back();
    if (line.slots.empty())
        line.first = leaf;
    // Lines are usually filled from the first leaf on.
    if (leaf < line.first) {
        line.slots.insert(line.slots.begin(), static_cast<std::size_t>(line.first - leaf), Slot());
        line.first = leaf;
    }
    const auto at = static_cast<std::size_t>(leaf - line.first);
    if (at >= line.slots.size())
        line.slots.resize(at + 1);
    Slot& slot = line.slots[at];
    _count += slot.aside == kEmpty ? 1 : 0;
    return slot;
}

void OutputCells::setNumber(const Address& address, double number, const VEXA_Format& format)
{
    slotAt(address) = {number, format, kNumber};
}

void OutputCells::setContent(const Address& address, TnContent content)
{
    slotAt(address).aside = kFirstContent + keep(std::move(content));
}

/// Stores equal content once, because labels occur in thousands of cells.
std::uint32_t OutputCells::keep(TnContent content)
{
    const auto known = _contentOfText.find(content.text);
    // The same text may be a label and a value; only the first one is shared.
    if (known != _contentOfText.end() && isSame(_contents[known->second], content))
        return known->second;
    const auto place = static_cast<std::uint32_t>(_contents.size());
    _contents.push_back(std::move(content));
    _contentOfText.emplace(_contents.back().text, place);
    return place;
}

void OutputCells::addNote(const Address& address, int note)
{
    std::vector<int>& notes = _notes[{lineAt(address), address.back()}];
    if (std::find(notes.begin(), notes.end(), note) == notes.end())
        notes.push_back(note);
}

std::optional<OutputCell> OutputCells::at(const Address& address) const
{
    const std::optional<Place> place = find(address);
    if (!place)
        return std::nullopt;
    const Line& line = _lines[place->first];
    const auto at = static_cast<std::size_t>(place->second - line.first);
    const Slot slot =
        place->second >= line.first && at < line.slots.size() ? line.slots[at] : Slot();
    const auto notes = _notes.find(*place);
    if (slot.aside == kEmpty && notes == _notes.end())
        return std::nullopt;
    OutputCell cell;
    if (slot.aside == kNumber)
        cell.content = TnNumber(slot.number, TnFormatSpec(slot.format)).content();
    else if (slot.aside != kEmpty)
        cell.content = _contents[slot.aside - kFirstContent];
    if (notes != _notes.end())
        cell.notes = notes->second;
    return cell;
}

void OutputCells::clear()
{
    *this = OutputCells();
}
