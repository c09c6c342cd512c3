#include "output/CategoryFinder.h"

#include <algorithm>

namespace {

// The key for children of a dimension with the same parent, kind and text.
std::string childKey(int parent, bool isGroup, const std::string& text)
{
    return std::to_string(parent) + (isGroup ? 'g' : 'c') + text;
}

const OutputCategory& nodeAt(const OutputDimension& dimension, int number)
{
    return dimension.nodes[static_cast<std::size_t>(number)];
}

} // namespace

CategoryFinder::Parent& CategoryFinder::inRound(int parent)
{
    Parent& state = of(parent);
    if (state.round < _allBegan)
        state = {0, _allBegan};
    return state;
}

/// Restarts the count of a text if the parent is in another round.
void CategoryFinder::join(SameText& same, const Parent& parent)
{
    if (same.round == parent.round)
        return;
    same.round = parent.round;
    same.declared = 0;
}

std::optional<int> CategoryFinder::find(const OutputDimension& dimension, int parent, bool isGroup,
                                        const std::string& text)
{
    if (const std::optional<int> next = tryNext(dimension, parent, isGroup, text))
        return next;
    const auto known = _byText.find(childKey(parent, isGroup, text));
    if (known == _byText.end())
        return std::nullopt;
    Parent& state = inRound(parent);
    SameText& same = _texts[known->second];
    join(same, state);
    if (same.declared == same.nodes.size())
        return std::nullopt;
    const int found = same.nodes[same.declared++];
    const std::vector<int>& children = nodeAt(dimension, parent).children;
    const auto place = std::lower_bound(children.begin(), children.end(), found);
    state.next = static_cast<std::size_t>(place - children.begin()) + 1;
    return found;
}

/// Tries the next child first: categories are usually declared in the same order.
std::optional<int> CategoryFinder::tryNext(const OutputDimension& dimension, int parent,
                                           bool isGroup, const std::string& text)
{
    Parent& state = inRound(parent);
    const std::vector<int>& children = nodeAt(dimension, parent).children;
    const std::size_t tried = state.next < children.size() ? state.next : 0;
    if (tried >= children.size())
        return std::nullopt;
    const int child = children[tried];
    const OutputCategory& node = nodeAt(dimension, child);
    if (node.isGroup != isGroup || node.label.text != text)
        return std::nullopt;
    SameText& same = _texts[_textOf[static_cast<std::size_t>(child)]];
    join(same, state);
    if (same.declared == same.nodes.size() || same.nodes[same.declared] != child)
        return std::nullopt;
    ++same.declared;
    state.next = tried + 1;
    return child;
}

void CategoryFinder::add(const OutputDimension& dimension, int parent, int node)
{
    const OutputCategory& child = nodeAt(dimension, node);
    const auto [known, isNew] =
        _byText.emplace(childKey(parent, child.isGroup, child.label.text), _texts.size());
    if (isNew)
        _texts.emplace_back();
    _textOf.push_back(known->second);
    _parents.emplace_back().round = ++_round;
    Parent& state = inRound(parent);
    state.next = nodeAt(dimension, parent).children.size();
    SameText& same = _texts[known->second];
    join(same, state);
    same.nodes.push_back(node);
    same.declared = same.nodes.size();
}
