#include "render/CellStore.h"

#include <utility>

CellStore::CellStore(KeyLayout layout)
    // Index 0 is reserved for cells without a text.
    : _layout(std::move(layout)), _texts(1)
{
}

Cell& CellStore::at(std::string_view key)
{
    const std::uint64_t number = _layout.numberOf(key);
    if (number == CellKey::kNowhere)
        return single(key);
    Cell* const page = pageOf(number);
    return page != nullptr ? page[number % kPageCells] : _scattered[number];
}

Cell& CellStore::inRun(std::string_view key)
{
    const std::uint64_t number = _layout.numberOf(key);
    if (number == CellKey::kNowhere)
        return single(key);
    Cell* const page = pageOf(number);
    return (page != nullptr ? page : addPage(number))[number % kPageCells];
}

const Cell* CellStore::find(std::string_view key) const
{
    const std::uint64_t number = _layout.numberOf(key);
    if (number != CellKey::kNowhere)
        return find(number);
    const auto found = _others.find(key);
    return found == _others.end() ? nullptr : &found->second;
}

const Cell* CellStore::find(std::uint64_t number) const
{
    if (const Cell* const page = pageOf(number))
        return &page[number % kPageCells];
    if (_scattered.empty())
        return nullptr;
    const auto found = _scattered.find(number);
    return found == _scattered.end() ? nullptr : &found->second;
}

Cell& CellStore::single(std::string_view key)
{
    const auto found = _others.find(key);
    return found != _others.end() ? found->second
                                  : _others.emplace(std::string(key), Cell()).first->second;
}

Cell* CellStore::pageOf(std::uint64_t number) const
{
    const std::uint64_t page = number / kPageCells;
    if (page == _lastNumber)
        return _lastPage;
    const auto found = _pages.find(page);
    if (found == _pages.end())
        return nullptr;
    _lastNumber = page;
    _lastPage = found->second.get();
    return _lastPage;
}

/// A cell is stored once, so existing single cells move to the new page.
Cell* CellStore::addPage(std::uint64_t number)
{
    const std::uint64_t page = number / kPageCells;
    const Page& added = _pages.emplace(page, std::make_unique<Cell[]>(kPageCells)).first->second;
    const auto first = _scattered.lower_bound(page * kPageCells);
    auto last = first;
    for (; last != _scattered.end() && last->first / kPageCells == page; ++last)
        added[last->first % kPageCells] = last->second;
    _scattered.erase(first, last);
    return added.get();
}

std::uint32_t CellStore::keepText(std::string_view text)
{
    if (text.empty())
        return 0;
    _texts.emplace_back(text);
    return static_cast<std::uint32_t>(_texts.size() - 1);
}
