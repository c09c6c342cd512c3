#include "render/TableWalk.h"

#include <utility>

/// Depth first, with a stack of its own: how many dimensions there are is up to the document.
void TableWalk::run()
{
    declare({"", _store.isNumbered() ? 0 : CellKey::kNowhere});
    while (!_levels.empty()) {
        Level& level = _levels.back();
        const std::vector<PivotStep>& steps = _dimensions[_levels.size() - 1].steps;
        if (level.step == steps.size())
            _levels.pop_back();
        else
            take(steps[level.step++]);
    }
}

/// Declares the next dimension; nothing if it has no name.
void TableWalk::declare(Address address)
{
    if (_levels.size() == _dimensions.size())
        return;
    const PivotDimension& dimension = _dimensions[_levels.size()];
    if (!dimension.name)
        return;
    Level level;
    level.address = std::move(address);
    level.dimension.reset(_table.Dimension(*dimension.name, dimension.sort));
    _footnotes.forEach(dimension.footnotes,
                       [&](const TnAnnotation& note) { level.dimension->Note(note); });
    level.dimension->Position(dimension.place, dimension.position, dimension.hidesName,
                              dimension.hidesChildren);
    _levels.push_back(std::move(level));
}

void TableWalk::take(const PivotStep& step)
{
    switch (step.kind) {
    case PivotStep::OpenGroup:
        openGroup(step);
        break;
    case PivotStep::CloseGroup:
        _levels.back().groups.pop_back();
        break;
    case PivotStep::Leaf:
        openLeaf(step);
        break;
    }
}

void TableWalk::openGroup(const PivotStep& step)
{
    Level& level = _levels.back();
    std::unique_ptr<TnGroup> group(level.parent().Group(*step.label, step.show, step.sort));
    _footnotes.forEach(step.footnotes, [&](const TnAnnotation& note) { group->Note(note); });
    level.groups.push_back(std::move(group));
}

void TableWalk::openLeaf(const PivotStep& step)
{
    Level& level = _levels.back();
    TnCategory category = level.parent().Category(*step.label);
    if (!step.show)
        category.hide();
    _footnotes.forEach(step.footnotes, [&](const TnAnnotation& note) { category.Note(note); });
    if (_levels.size() < _dimensions.size())
        declare(addressOf(level.address, step));
    else if (Cell* cell = cellAt(level.address, step))
        _placer.place(category, *cell);
}

/// By number, which is quick, or by key, for cells that no leaves have by right.
Cell* TableWalk::cellAt(const Address& base, const PivotStep& leaf)
{
    const std::uint64_t number = numberOf(base, leaf);
    return number == CellKey::kNowhere ? _store.find(base.key + leaf.subscript)
                                       : _store.find(number);
}

TableWalk::Address TableWalk::addressOf(const Address& base, const PivotStep& leaf) const
{
    return {base.key + leaf.subscript, numberOf(base, leaf)};
}

std::uint64_t TableWalk::numberOf(const Address& base, const PivotStep& leaf) const
{
    if (base.number == CellKey::kNowhere || leaf.position == CellKey::kNowhere)
        return CellKey::kNowhere;
    return base.number + leaf.position * _store.layout().segments()[_levels.size() - 1].stride;
}
