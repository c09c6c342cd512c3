#include "render/CellStore.h"

#include <utility>

namespace {
/// Beyond this the list of the pages would be larger than what a result can say about their cells.
constexpr std::uint64_t kMostNumbered = std::uint64_t{1} << 32;
} // namespace

CellStore::CellStore(KeyLayout layout)
    // Place 0 of both lists is taken, so that 0 in a cell stands for nothing.
    : _layout(std::move(layout)), _isNumbered(_layout.cellCount() <= kMostNumbered), _texts(1),
      _footnotes(1)
{
}

Cell& CellStore::at(std::string_view key)
{
    if (_isNumbered) {
        const std::uint64_t number = _layout.numberOf(key);
        if (number != CellKey::kNowhere)
            return numbered(number);
    }
    const auto found = _others.find(key);
    return found != _others.end() ? found->second
                                  : _others.emplace(std::string(key), Cell()).first->second;
}

Cell* CellStore::find(std::string_view key)
{
    if (_isNumbered) {
        const std::uint64_t number = _layout.numberOf(key);
        if (number != CellKey::kNowhere)
            return find(number);
    }
    const auto found = _others.find(key);
    return found == _others.end() ? nullptr : &found->second;
}

Cell* CellStore::find(std::uint64_t number)
{
    const std::uint64_t page = number / kPageCells;
    return page < _pages.size() && _pages[page] ? &_pages[page][number % kPageCells] : nullptr;
}

Cell& CellStore::numbered(std::uint64_t number)
{
    const std::uint64_t page = number / kPageCells;
    if (page >= _pages.size())
        _pages.resize(page + 1);
    if (!_pages[page])
        _pages[page] = std::make_unique<Cell[]>(kPageCells);
    return _pages[page][number % kPageCells];
}

std::uint32_t CellStore::keepText(std::string_view text)
{
    if (text.empty())
        return 0;
    _texts.emplace_back(text);
    return static_cast<std::uint32_t>(_texts.size() - 1);
}

std::uint32_t CellStore::keepFootnotes(std::vector<int> footnotes)
{
    if (footnotes.empty())
        return 0;
    _footnotes.push_back(std::move(footnotes));
    return static_cast<std::uint32_t>(_footnotes.size() - 1);
}
