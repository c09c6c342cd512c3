#include "render/TableWalk.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "render/StopRequest.h"

namespace {

constexpr std::uint64_t kEndless = std::numeric_limits<std::uint64_t>::max();

std::uint64_t saturatedProduct(std::uint64_t left, std::uint64_t right)
{
    return right != 0 && left > kEndless / right ? kEndless : left * right;
}

std::uint64_t saturatedSum(std::uint64_t left, std::uint64_t right)
{
    return left > kEndless - right ? kEndless : left + right;
}

} // namespace

std::uint64_t TableWalk::length(const std::vector<PivotDimension>& dimensions)
{
    std::uint64_t length = 0;
    std::uint64_t declarations = 1;
    for (const PivotDimension& dimension : dimensions) {
        if (!dimension.name)
            break;
        length = saturatedSum(length, saturatedProduct(declarations, dimension.steps.size()));
        const auto leaves =
            std::count_if(dimension.steps.begin(), dimension.steps.end(),
                          [](const PivotStep& step) { return step.kind == PivotStep::Leaf; });
        declarations = saturatedProduct(declarations, static_cast<std::uint64_t>(leaves));
    }
    return length;
}

/// Depth first with an explicit stack, because the document determines the number of dimensions.
void TableWalk::run()
{
    declare({"", _store.isNumbered() ? 0 : CellKey::kNowhere});
    // Asking the host at every step would cost more than the step.
    constexpr unsigned kStepsBetween = 256;
    for (unsigned taken = 0; !_levels.empty(); ++taken) {
        if (taken % kStepsBetween == 0 && isStopRequested())
            return;
        Level& level = _levels.back();
        const std::vector<PivotStep>& steps = _dimensions[_levels.size() - 1].steps;
        if (level.step == steps.size())
            _levels.pop_back();
        else
            take(steps[level.step++]);
    }
}

/// Declares the next dimension, unless it has no name.
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
    else
        placeCell(category, level.address, step);
}

void TableWalk::placeCell(TnCategory& category, const Address& base, const PivotStep& leaf)
{
    CellStyle style;
    if (!_styles.isEmpty()) {
        _key.assign(base.key).append(leaf.subscript);
        style = _styles.of(_key);
    }
    _placer.place(category, cellAt(base, leaf), style);
}

/// By number, which is fast, or by key for cells without a number.
const Cell* TableWalk::cellAt(const Address& base, const PivotStep& leaf)
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
